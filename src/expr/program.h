#pragma once
// A formula compiled once into a flat list of steps over numbered registers. The order in
// which the collapse consumes and fills entries depends only on the formula, so a solve is
// one pass over the steps: no allocation, no text, no search.
#include <cmath>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "expr/fp_flags.h"
#include "expr/functions.h"
#include "expr/native.h"
#include "expr/random.h"
#include "expr/variables.h"

namespace quillet::expr {

// The arithmetic comes first, from Add to Negate.
enum class Op : std::uint8_t {
    Add, Sub, Mul, Div, IntDiv, IntMod, Pow,
    Square,           // "^" with the constant 2 as exponent
    TimesTenTo,       // ">": a * 10^b
    TimesTenToMinus,  // "<": a * 10^-b
    Negate,
    Random,         // the constant "rnd"
    // Functions common in formulas, without a call through the table
    Exp, Sin, Cos, Abs, Sqr, Log, Atn, Tan, Sgn,
    SinCos,         // sin(a) and cos(a) in one call: the sine to `out`, the cosine to register b
    Min, Max,       // of the first and the last argument, in registers a and b
    Call,           // a function of the table with its first and last argument
    CheckVariable,  // raises 1102 when the variable in slot `a` is undefined
    Raise,          // raises number `a`
    End,            // closes every list of steps; the result is in register `a`
};

// The ops from Add to Negate: pure arithmetic on the values of registers a and b.
double Arithmetic(Op op, double a, double b);

// An operand that the value-producing step just before computed is taken as it comes out,
// not stored and read back: a store followed by a load of the same place costs several cycles.
enum class Fresh : std::uint8_t { None, A, B };

struct Step {
    Op op = Op::Raise;
    Fresh fresh = Fresh::None;
    std::uint8_t code = 0;  // where the dispatch finds the step's work: set by Link
    std::uint32_t out = 0;  // the register written
    std::uint32_t a = 0;    // registers read; slot, number or message where the op says so
    std::uint32_t b = 0;    // for CheckVariable and Raise: the message; written by SinCos
    FunctionFn fn = nullptr;
};

// One run over many values of one variable: the solution for xs[i] goes to ys[i], and `done`
// counts them, so that after an error xs[done] is the value that raised it.
struct Sweep {
    VarSlot slot;
    std::span<const double> xs;
    std::span<double> ys;
    std::size_t done = 0;
};

struct Program {
    // Each variable the formula names is read into its register once per solve.
    struct Input {
        VarSlot slot;
        std::uint32_t reg;
    };

    std::vector<Step> steps;
    // The same steps without the variable checks, for a solve where every input is defined.
    std::vector<Step> unchecked;  // both end with an End step
    std::vector<Input> inputs;
    // Known true once every input was found defined; setting a variable cannot undo that, so
    // only removing variables must clear it.
    bool inputsDefined = false;
    // A solve may check the processor's flags once at its end instead of each step's result,
    // and run again with every check when they show a fault. Not for a formula that draws
    // random numbers (the second run would draw others) or holds a constant that is not finite.
    bool checksAtEnd = true;
    // Some step raises even then: a call through the function table, an integer division, or
    // a failure the compiler found. Set by Link.
    bool stepsRaise = false;
    // Literals and constants are filled in once; the steps write the rest.
    std::vector<double> registers;
    std::vector<std::string> messages;
    // Machine code for the steps, made once the formula has been solved often enough to pay
    // for it, for the angle unit of that moment.
    std::shared_ptr<const NativeCode> native;
    bool nativeDegrees = false;
    bool nativeTried = false;
    std::size_t solves = 0;

    // Marks fresh operands and sets each step's code; once, after the steps are complete.
    void Link();
    // Raises the numbered errors of the expression class, at the step where they arise. With a
    // sweep, solves once for each of its values, with the variable otherwise as it is. May clear
    // the processor's flags for overflow, division by zero and invalid operations.
    double Run(const Variables& variables, bool degrees, SingleRandom& random, Sweep* sweep = nullptr) {
        if (native && !sweep && inputsDefined && nativeDegrees == degrees)
            return RunNative(variables, degrees, random);
        return RunAny(variables, degrees, random, sweep);
    }

private:
    // Inline: on short formulas a call more is a tenth of the time.
    double RunNative(const Variables& variables, bool degrees, SingleRandom& random) {
        double y = (*native)(variables.Values().data(), registers.data());
        if (ErrorFlagged(y) || !std::isfinite(y)) [[unlikely]]
            return RunAfterFault(variables, degrees, random);
        return y;
    }
    double RunAfterFault(const Variables& variables, bool degrees, SingleRandom& random);
    double RunMachineCode(const Variables& variables, bool degrees, SingleRandom& random, Sweep* sweep);
    double RunDecidingNative(const Variables& variables, bool degrees, SingleRandom& random, Sweep* sweep);
    double RunAny(const Variables& variables, bool degrees, SingleRandom& random, Sweep* sweep);
};

}  // namespace quillet::expr
