#include "expr/program.h"

#include <iterator>

#include "expr/checked_math.h"
#include "expr/errors.h"

namespace quillet::expr {

namespace {

inline double Apply(Op op, double a, double b) {
    switch (op) {
        case Op::Add: return Add(a, b);
        case Op::Sub: return Sub(a, b);
        case Op::Mul: return Mul(a, b);
        case Op::Div: return Div(a, b);
        case Op::IntDiv: return IntDiv(a, b);
        case Op::IntMod: return IntMod(a, b);
        case Op::Pow: return Pow(a, b);
        case Op::Square: return Square(a);
        case Op::TimesTenTo: return Mul(a, Pow(10, b));
        case Op::TimesTenToMinus: return Mul(a, Pow(10, -b));
        case Op::Negate: return -a;
        default: RaiseInvalidEquation();
    }
}

constexpr bool IsArithmetic(Op op) { return op <= Op::Negate; }
bool TakesA(Op op) { return IsArithmetic(op) || op == Op::Exp || op == Op::Sin || op == Op::Cos || op == Op::End; }
bool TakesB(Op op) { return IsArithmetic(op) && op != Op::Square && op != Op::Negate; }
bool Produces(Op op) { return op != Op::CheckVariable && op != Op::Raise && op != Op::End; }

struct Machine {
    double* const r;
    const Program& program;
    const Variables& variables;
    const bool degrees;
    SingleRandom& random;
};

// The rare steps stay out of line, so that the dispatch keeps its registers for the others.
[[gnu::noinline]] double Call(const Step& s, const double* r, bool degrees, SingleRandom& random) {
    return s.fn(FunctionCall{r[s.a], r[s.b], degrees, random});
}

[[noreturn, gnu::noinline]] void RaiseAt(const Program& p, int number, const Step& s) {
    RaiseEq(number, p.messages[s.b]);
}

// What a step does, given `last`, the value the step before it produced. It returns the value
// it produces itself (stored in its register as well), or `last` again.
template <Op op, Fresh f>
inline double Do(const Step& s, Machine& m, double last) {
    double* const r = m.r;
    // Read only by the ops that have them: elsewhere a and b are no registers.
    auto a = [&] { return f == Fresh::A ? last : r[s.a]; };
    auto b = [&] { return f == Fresh::B ? last : r[s.b]; };
    if constexpr (IsArithmetic(op)) {
        return r[s.out] = Apply(op, a(), b());
    } else if constexpr (op == Op::Exp) {
        return r[s.out] = Exp(a());
    } else if constexpr (op == Op::Sin) {
        return r[s.out] = Sine(a(), m.degrees);
    } else if constexpr (op == Op::Cos) {
        return r[s.out] = Cosine(a(), m.degrees);
    } else if constexpr (op == Op::Random) {
        return r[s.out] = m.random.Next();
    } else if constexpr (op == Op::Call) {
        return r[s.out] = Call(s, r, m.degrees, m.random);
    } else if constexpr (op == Op::CheckVariable) {
        if (!m.variables.Defined(VarSlot{s.a})) [[unlikely]]
            RaiseAt(m.program, eqerr::UndefinedVariable, s);
        return last;
    } else {
        RaiseAt(m.program, static_cast<int>(s.a), s);
    }
}

// Every op but End, in the order of the enumeration: the dispatch table holds three entries
// per op, one for each Fresh.
#define QUILLET_OPS(X)                                                                                 \
    X(Add) X(Sub) X(Mul) X(Div) X(IntDiv) X(IntMod) X(Pow) X(Square) X(TimesTenTo) X(TimesTenToMinus) \
    X(Negate) X(Random) X(Exp) X(Sin) X(Cos) X(Call) X(CheckVariable) X(Raise)

#define QUILLET_ENUMERATOR(name) Op::name,
constexpr Op kOps[] = {QUILLET_OPS(QUILLET_ENUMERATOR)};

constexpr bool ListedInOrder() {
    for (std::size_t i = 0; i < std::size(kOps); ++i)
        if (static_cast<std::size_t>(kOps[i]) != i) return false;
    return std::size(kOps) == static_cast<std::size_t>(Op::End);
}
static_assert(ListedInOrder(), "the dispatch table follows the enumeration");

// The solve itself; a sweep solves again for each of its values, without leaving. Registers
// are the program's own, changed in place.
template <bool kSweep>
double Solve(Program& p, double* r, const Variables& variables, bool degrees, SingleRandom& random,
             Sweep* sweep) {
    Machine m{r, p, variables, degrees, random};
    double last = 0;  // the first input's value, as if a step had just produced it
    if (!p.inputsDefined) {
        bool all = true;
        for (const Program::Input& in : p.inputs) all &= variables.Defined(in.slot);
        p.inputsDefined = all;
    }
    for (auto in = p.inputs.rbegin(); in != p.inputs.rend(); ++in) last = r[in->reg] = variables.Value(in->slot);
    const Step* const first = (p.inputsDefined ? p.unchecked : p.steps).data();
    const Step* s = first;
    double y = 0;
    // The swept variable takes its next value, if the formula reads it at all.
    auto advance = [&] {
        for (const Program::Input& in : p.inputs)
            if (in.slot.index == sweep->slot.index) r[in.reg] = sweep->xs[sweep->done];
        if (!p.inputs.empty()) last = r[p.inputs.front().reg];
    };
    if constexpr (kSweep) advance();
#if defined(__GNUC__) && !defined(QUILLET_SWITCH_DISPATCH)
    // Each step jumps straight to the next one's code, which the processor predicts far better
    // than the single jump of a switch. Labels as values are a GNU extension; defining
    // QUILLET_SWITCH_DISPATCH takes the portable switch below, to test it with GCC.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wpedantic"
#define QUILLET_LABELS(name) &&name##None, &&name##A, &&name##B,
    static const void* const kCode[] = {QUILLET_OPS(QUILLET_LABELS) && EndNone, &&EndA, &&EndNone};
#define QUILLET_HANDLERS(name)                                  \
    name##None : last = Do<Op::name, Fresh::None>(*s, m, last); \
    goto* kCode[(++s)->code];                                   \
    name##A : last = Do<Op::name, Fresh::A>(*s, m, last);       \
    goto* kCode[(++s)->code];                                   \
    name##B : last = Do<Op::name, Fresh::B>(*s, m, last);       \
    goto* kCode[(++s)->code];
Start:  // where a sweep starts again
    __attribute__((unused));
    goto* kCode[s->code];
    QUILLET_OPS(QUILLET_HANDLERS)
EndA:
    y = last;
    goto Solved;
EndNone:
    y = r[s->a];
Solved:
    if constexpr (kSweep) {
        sweep->ys[sweep->done] = y;
        if (++sweep->done < sweep->xs.size()) {
            advance();
            s = first;
            goto Start;
        }
    }
    return y;
#pragma GCC diagnostic pop
#else
    // Every value is stored in its register as well, so reading the registers is always right.
#define QUILLET_CASE(name) \
    case Op::name: last = Do<Op::name, Fresh::None>(*s, m, last); break;
    for (;; s = first) {
        for (; s->op != Op::End; ++s) {
            switch (s->op) {
                QUILLET_OPS(QUILLET_CASE)
                case Op::End: break;
            }
        }
        y = r[s->a];
        if constexpr (kSweep) {
            sweep->ys[sweep->done] = y;
            if (++sweep->done < sweep->xs.size()) {
                advance();
                continue;
            }
        }
        return y;
    }
#endif
}

}  // namespace

double Arithmetic(Op op, double a, double b) { return Apply(op, a, b); }

void Program::Link() {
    // Run starts with the first input's value as the last one produced.
    bool produced = !inputs.empty();
    std::uint32_t last = produced ? inputs.front().reg : 0;  // where that value is
    for (Step& s : steps) {
        s.fresh = !produced                     ? Fresh::None
                  : TakesA(s.op) && s.a == last ? Fresh::A
                  : TakesB(s.op) && s.b == last ? Fresh::B
                                                : Fresh::None;
        s.code = static_cast<std::uint8_t>(3 * static_cast<int>(s.op) + static_cast<int>(s.fresh));
        if (Produces(s.op)) {
            produced = true;
            last = s.out;
        }
    }
    unchecked.clear();
    for (const Step& s : steps)
        if (s.op != Op::CheckVariable) unchecked.push_back(s);
}

double Program::Run(const Variables& variables, bool degrees, SingleRandom& random, Sweep* sweep) {
    return sweep ? Solve<true>(*this, registers.data(), variables, degrees, random, sweep)
                 : Solve<false>(*this, registers.data(), variables, degrees, random, nullptr);
}

}  // namespace quillet::expr
