#include "expr/program.h"

#include "expr/checked_math.h"
#include "expr/errors.h"

namespace quillet::expr {

double Program::Run(const Variables& variables, bool degrees, SingleRandom& random) {
    double* r = registers.data();
    bool allDefined = true;
    for (const Input& in : inputs) {
        allDefined &= variables.Defined(in.slot);
        r[in.reg] = variables.Value(in.slot);
    }
    for (const Step& s : allDefined ? unchecked : steps) {
        switch (s.op) {
            case Op::Add: r[s.out] = Add(r[s.a], r[s.b]); break;
            case Op::Sub: r[s.out] = Sub(r[s.a], r[s.b]); break;
            case Op::Mul: r[s.out] = Mul(r[s.a], r[s.b]); break;
            case Op::Div: r[s.out] = Div(r[s.a], r[s.b]); break;
            case Op::IntDiv: r[s.out] = IntDiv(r[s.a], r[s.b]); break;
            case Op::IntMod: r[s.out] = IntMod(r[s.a], r[s.b]); break;
            case Op::Pow: r[s.out] = Pow(r[s.a], r[s.b]); break;
            case Op::TimesTenTo: r[s.out] = Mul(r[s.a], Pow(10, r[s.b])); break;
            case Op::TimesTenToMinus: r[s.out] = Mul(r[s.a], Pow(10, -r[s.b])); break;
            case Op::Negate: r[s.out] = -r[s.a]; break;
            case Op::Random: r[s.out] = random.Next(); break;
            case Op::Call: r[s.out] = s.fn(FunctionCall{r[s.a], r[s.b], degrees, random}); break;
            case Op::CheckVariable:
                if (!variables.Defined(VarSlot{s.a})) RaiseEq(eqerr::UndefinedVariable, messages[s.b]);
                break;
            case Op::Raise: RaiseEq(static_cast<int>(s.a), messages[s.b]);
        }
    }
    return r[result];
}

}  // namespace quillet::expr
