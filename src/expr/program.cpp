#include "expr/program.h"

#include <iterator>

#include "expr/checked_math.h"
#include "expr/errors.h"
#include "expr/fp_flags.h"

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

// The same arithmetic without checks, for a solve that reads the processor's flags at its end.
// The integer ops keep theirs: their faults leave no flag.
inline double ApplyUnchecked(Op op, double a, double b) {
    switch (op) {
        case Op::Add: return a + b;
        case Op::Sub: return a - b;
        case Op::Mul: return a * b;
        case Op::Div: return a / b;
        case Op::IntDiv: return IntDiv(a, b);
        case Op::IntMod: return IntMod(a, b);
        case Op::Pow: return PowUnchecked(a, b);
        case Op::Square: return SquareUnchecked(a);
        case Op::TimesTenTo: return a * PowUnchecked(10, b);
        case Op::TimesTenToMinus: return a * PowUnchecked(10, -b);
        case Op::Negate: return -a;
        default: RaiseInvalidEquation();
    }
}

// Each step's result checked as it comes, or the processor's flags read once at the end.
enum class Checks : std::uint8_t { EachStep, AtEnd };

constexpr bool IsArithmetic(Op op) { return op <= Op::Negate; }
constexpr bool IsDirectFunction(Op op) { return op >= Op::Exp && op <= Op::Max; }
bool TakesA(Op op) { return IsArithmetic(op) || IsDirectFunction(op) || op == Op::End; }
bool TakesB(Op op) {
    return (IsArithmetic(op) && op != Op::Square && op != Op::Negate) || op == Op::Min || op == Op::Max;
}
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
template <Op op, Fresh f, Checks c>
inline double Do(const Step& s, Machine& m, double last) {
    double* const r = m.r;
    constexpr bool each = c == Checks::EachStep;
    // Read only by the ops that have them: elsewhere a and b are no registers.
    auto a = [&] { return f == Fresh::A ? last : r[s.a]; };
    auto b = [&] { return f == Fresh::B ? last : r[s.b]; };
    if constexpr (IsArithmetic(op)) {
        return r[s.out] = each ? Apply(op, a(), b()) : ApplyUnchecked(op, a(), b());
    } else if constexpr (op == Op::Exp) {
        return r[s.out] = each ? Exp(a()) : LibExp(a());
    } else if constexpr (op == Op::Sin) {
        return r[s.out] = each ? Sine(a(), m.degrees) : std::sin(m.degrees ? a() * kR : a());
    } else if constexpr (op == Op::Cos) {
        return r[s.out] = each ? Cosine(a(), m.degrees) : std::cos(m.degrees ? a() * kR : a());
    } else if constexpr (op == Op::Abs) {
        return r[s.out] = std::fabs(a());
    } else if constexpr (op == Op::Sqr) {
        return r[s.out] = each ? Sqr(a()) : std::sqrt(a());
    } else if constexpr (op == Op::Log) {
        return r[s.out] = each ? Log(a()) : LibLog(a());
    } else if constexpr (op == Op::Atn) {
        return r[s.out] = each ? ArcTangent(a(), m.degrees) : (m.degrees ? Atn(a()) * kD : Atn(a()));
    } else if constexpr (op == Op::Tan) {
        return r[s.out] = each ? Tangent(a(), m.degrees) : std::tan(m.degrees ? a() * kR : a());
    } else if constexpr (op == Op::Sgn) {
        return r[s.out] = Sgn(a());
    } else if constexpr (op == Op::Min || op == Op::Max) {
        const double x = a(), y = b();
        return r[s.out] = op == Op::Min ? Smaller(x, y) : Larger(x, y);
    } else if constexpr (op == Op::SinCos) {
        double sine = 0, cosine = 0;
        LibSinCos(each ? AngleIn(a(), m.degrees) : m.degrees ? a() * kR : a(), sine, cosine);
        r[s.b] = cosine;
        return r[s.out] = sine;
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
    X(Negate) X(Random) X(Exp) X(Sin) X(Cos) X(Abs) X(Sqr) X(Log) X(Atn) X(Tan) X(Sgn) X(SinCos) X(Min) X(Max) \
        X(Call) X(CheckVariable) X(Raise)

#define QUILLET_ENUMERATOR(name) Op::name,
constexpr Op kOps[] = {QUILLET_OPS(QUILLET_ENUMERATOR)};

constexpr bool ListedInOrder() {
    for (std::size_t i = 0; i < std::size(kOps); ++i)
        if (static_cast<std::size_t>(kOps[i]) != i) return false;
    return std::size(kOps) == static_cast<std::size_t>(Op::End);
}
static_assert(ListedInOrder(), "the dispatch table follows the enumeration");

// Ends a solve checking at the end that met a fault, before it counts the value done.
inline double Faulted(bool* clean) {
    *clean = false;
    return 0;
}

double SolveAgainWithEveryCheck(Program& p, const Variables& variables, bool degrees, SingleRandom& random);

// A single solve checking at the end goes on to the solve with every check itself; a sweep
// stops and leaves that to its caller.
template <bool kSweep>
double Fault(Program& p, const Variables& variables, bool degrees, SingleRandom& random, bool* clean) {
    if constexpr (kSweep)
        return Faulted(clean);
    else
        return SolveAgainWithEveryCheck(p, variables, degrees, random);
}

// The solve itself; a sweep solves again for each of its values, without leaving. Registers
// are the program's own, changed in place. Checking at the end, a value that left a fault flag
// or is not finite itself (or an input that is not finite) is a fault. No try block in here: it
// made the compiler keep the values the steps pass on to each other on the stack instead of in
// the processor's registers. Six arguments at most, all in registers, so that Run can jump to
// it instead of calling it.
template <bool kSweep, Checks kChecks>
double Solve(Program& p, const Variables& variables, bool degrees, SingleRandom& random, Sweep* sweep,
             bool* clean) {
    double* const r = p.registers.data();
    constexpr bool kAtEnd = kChecks == Checks::AtEnd;
    Machine m{r, p, variables, degrees, random};
    double last = 0;  // the first input's value, as if a step had just produced it
    for (auto in = p.inputs.rbegin(); in != p.inputs.rend(); ++in) {
        last = r[in->reg] = variables.Value(in->slot);
        if (kAtEnd && !std::isfinite(last)) return Fault<kSweep>(p, variables, degrees, random, clean);
    }
    const Step* const first = (kAtEnd || p.inputsDefined ? p.unchecked : p.steps).data();
    const Step* s = first;
    double y = 0;
    // The swept variable takes its next value, if the formula reads it at all.
    // Looked up once, so that the loop keeps fewer values in the processor's registers.
    double* swept = nullptr;
    const double* firstInput = nullptr;  // without inputs, no step takes `last`
    if constexpr (kSweep) {
        for (const Program::Input& in : p.inputs)
            if (in.slot.index == sweep->slot.index) swept = &r[in.reg];
        if (!p.inputs.empty()) firstInput = &r[p.inputs.front().reg];
    }
    // Also takes the first input as the last value produced. A capture of `last` by reference
    // kept it on the stack in every step.
    auto advance = [sweep, swept, firstInput](double& next) {
        const double x = sweep->xs[sweep->done];
        if (swept) *swept = x;
        if (firstInput) next = *firstInput;
        return !kAtEnd || std::isfinite(x);
    };
    if constexpr (kSweep)
        if (!advance(last)) return Fault<kSweep>(p, variables, degrees, random, clean);
#if defined(__GNUC__) && !defined(QUILLET_SWITCH_DISPATCH)
    // Each step jumps straight to the next one's code, which the processor predicts far better
    // than the single jump of a switch. Labels as values are a GNU extension; defining
    // QUILLET_SWITCH_DISPATCH takes the portable switch below, to test it with GCC.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wpedantic"
#define QUILLET_LABELS(name) &&name##None, &&name##A, &&name##B,
#define QUILLET_DO(name, fresh) Do<Op::name, Fresh::fresh, kChecks>(*s, m, last)
    static const void* const kCode[] = {QUILLET_OPS(QUILLET_LABELS) && EndNone, &&EndA, &&EndNone};
    // The empty asm, different in each handler, keeps the compiler from merging the handlers'
    // identical ends into one shared jump, which would undo the point of jumping from each.
#define QUILLET_NEXT(name, fresh)                                                       \
    {                                                                                   \
        const void* next = kCode[(++s)->code];                                          \
        asm volatile("" : "+r"(next) : "i"(3 * static_cast<int>(Op::name) + (fresh))); \
        goto* next;                                                                     \
    }
#define QUILLET_HANDLERS(name)                  \
    name##None : last = QUILLET_DO(name, None); \
    QUILLET_NEXT(name, 0)                       \
    name##A : last = QUILLET_DO(name, A);       \
    QUILLET_NEXT(name, 1)                       \
    name##B : last = QUILLET_DO(name, B);       \
    QUILLET_NEXT(name, 2)
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
    if constexpr (kAtEnd)
        if (ErrorFlagged(y) || !std::isfinite(y)) return Fault<kSweep>(p, variables, degrees, random, clean);
    if constexpr (kSweep) {
        sweep->ys[sweep->done] = y;
        if (++sweep->done < sweep->xs.size()) {
            if (!advance(last)) return Fault<kSweep>(p, variables, degrees, random, clean);
            s = first;
            goto Start;
        }
    }
    return y;
#pragma GCC diagnostic pop
#else
    // Every value is stored in its register as well, so reading the registers is always right.
#define QUILLET_CASE(name) \
    case Op::name: last = Do<Op::name, Fresh::None, kChecks>(*s, m, last); break;
    for (;; s = first) {
        for (; s->op != Op::End; ++s) {
            switch (s->op) {
                QUILLET_OPS(QUILLET_CASE)
                case Op::End: break;
            }
        }
        y = r[s->a];
        if constexpr (kAtEnd)
            if (ErrorFlagged(y) || !std::isfinite(y)) return Fault<kSweep>(p, variables, degrees, random, clean);
        if constexpr (kSweep) {
            sweep->ys[sweep->done] = y;
            if (++sweep->done < sweep->xs.size()) {
                if (!advance(last)) return Fault<kSweep>(p, variables, degrees, random, clean);
                continue;
            }
        }
        return y;
    }
#endif
}

[[gnu::noinline]] double SolveEachStep(Program& p, const Variables& variables, bool degrees, SingleRandom& random,
                                       Sweep* sweep) {
    return sweep ? Solve<true, Checks::EachStep>(p, variables, degrees, random, sweep, nullptr)
                 : Solve<false, Checks::EachStep>(p, variables, degrees, random, nullptr, nullptr);
}

// After a fault the flags are cleared, so that they stay clear between solves without a write
// before each one, and the value is solved again with every check: it raises at its own step,
// or the flag was set on the way to a finite result.
[[gnu::noinline]] double SolveAgainWithEveryCheck(Program& p, const Variables& variables, bool degrees,
                                                  SingleRandom& random) {
    ClearErrorFlags();
    return SolveEachStep(p, variables, degrees, random, nullptr);
}

// Checking at the end a program with steps that may raise: one that raised is a fault too.
[[gnu::noinline]] double SolveCheckingAtEnd(Program& p, const Variables& variables, bool degrees,
                                            SingleRandom& random) {
    try {
        return Solve<false, Checks::AtEnd>(p, variables, degrees, random, nullptr, nullptr);
    } catch (...) {
    }
    return SolveAgainWithEveryCheck(p, variables, degrees, random);
}

// A sweep checking at the end stops at a fault, and after the solve of that value with every
// check goes on from the next one.
[[gnu::noinline]] double SweepCheckingAtEnd(Program& p, const Variables& variables, bool degrees,
                                            SingleRandom& random, Sweep& sweep) {
    for (;;) {
        bool clean = true;
        double y = 0;
        try {
            y = Solve<true, Checks::AtEnd>(p, variables, degrees, random, &sweep, &clean);
        } catch (...) {
            clean = false;
        }
        if (clean) return y;
        ClearErrorFlags();
        Sweep one{sweep.slot, sweep.xs.subspan(sweep.done, 1), sweep.ys.subspan(sweep.done, 1)};
        y = SolveEachStep(p, variables, degrees, random, &one);
        if (++sweep.done == sweep.xs.size()) return y;
    }
}

// Making machine code costs about as much as a few thousand interpreted steps.
constexpr std::size_t kSolvesBeforeNative = 16;

// Decides once, after enough solves, whether the program runs as machine code. Out of line, so
// that the interpreter's own solves do not carry it.
[[gnu::noinline, gnu::cold]] bool TryNative(Program& p, bool degrees, const Sweep* sweep) {
    p.solves += sweep ? sweep->xs.size() : 1;
    if (p.solves < kSolvesBeforeNative) return false;
    p.nativeTried = true;
    if (NativeCodeAllowed()) {
        p.native = MakeNativeCode(p, degrees);
        p.nativeDegrees = degrees;
    }
    return p.native != nullptr;
}

// As SweepCheckingAtEnd: a value that faults is solved again with every check, which raises
// with the sweep stopped at it, or gives its value. The machine code reads the swept value
// from a copy of the variables.
double SweepNative(Program& p, const Variables& variables, bool degrees, SingleRandom& random, Sweep& sweep) {
    std::vector<double> values = variables.Values();
    double* const r = p.registers.data();
    double y = 0;
    for (; sweep.done < sweep.xs.size(); ++sweep.done) {
        values[sweep.slot.index] = sweep.xs[sweep.done];
        y = (*p.native)(values.data(), r);
        if (!ErrorFlagged(y) && std::isfinite(y)) {
            sweep.ys[sweep.done] = y;
            continue;
        }
        ClearErrorFlags();
        Sweep one{sweep.slot, sweep.xs.subspan(sweep.done, 1), sweep.ys.subspan(sweep.done, 1)};
        y = SolveEachStep(p, variables, degrees, random, &one);
    }
    return y;
}

[[gnu::noinline]] bool AllDefined(const std::vector<Program::Input>& inputs, const Variables& variables) {
    bool all = true;
    for (const Program::Input& in : inputs) all &= variables.Defined(in.slot);
    return all;
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
    stepsRaise = false;
    for (const Step& s : steps) {
        if (s.op != Op::CheckVariable) unchecked.push_back(s);
        stepsRaise |= s.op == Op::Call || s.op == Op::IntDiv || s.op == Op::IntMod || s.op == Op::Raise;
    }
}


double Program::RunAfterFault(const Variables& variables, bool degrees, SingleRandom& random) {
    return SolveAgainWithEveryCheck(*this, variables, degrees, random);
}

[[gnu::noinline]] double Program::RunMachineCode(const Variables& variables, bool degrees, SingleRandom& random,
                                                 Sweep* sweep) {
    return sweep ? SweepNative(*this, variables, degrees, random, *sweep) : RunNative(variables, degrees, random);
}

namespace {

// The steps' solve that checks at the end.
inline double RunStepsAtEnd(Program& p, const Variables& variables, bool degrees, SingleRandom& random,
                            Sweep* sweep) {
    if (sweep) return SweepCheckingAtEnd(p, variables, degrees, random, *sweep);
    if (p.stepsRaise) return SolveCheckingAtEnd(p, variables, degrees, random);
    return Solve<false, Checks::AtEnd>(p, variables, degrees, random, nullptr, nullptr);
}

}  // namespace

// Out of line: a program that runs only its steps, once decided, does not carry the decision.
[[gnu::noinline, gnu::cold]] double Program::RunDecidingNative(const Variables& variables, bool degrees,
                                                              SingleRandom& random, Sweep* sweep) {
    if (native ? nativeDegrees == degrees : TryNative(*this, degrees, sweep))
        return RunMachineCode(variables, degrees, random, sweep);
    return RunStepsAtEnd(*this, variables, degrees, random, sweep);
}

double Program::RunAny(const Variables& variables, bool degrees, SingleRandom& random, Sweep* sweep) {
    if (!inputsDefined) inputsDefined = AllDefined(inputs, variables);
    if (!(kFlagsReadable && checksAtEnd && inputsDefined))
        return SolveEachStep(*this, variables, degrees, random, sweep);
    if (native || !nativeTried) [[unlikely]]
        return RunDecidingNative(variables, degrees, random, sweep);
    return RunStepsAtEnd(*this, variables, degrees, random, sweep);
}

}  // namespace quillet::expr
