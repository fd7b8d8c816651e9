// Any formula text must give a number or a numbered error: no crash, hang or stray exception.
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "env/errors.h"
#include "expr/equation.h"
#include "expr/native.h"

namespace {

// Only the class's own numbers and the arithmetic ones may come out, with the class as source.
bool Expected(const quillet::RuntimeError& e) {
    const int n = e.number();
    const bool known = n == 5 || n == 6 || n == 11 || (n >= 1100 && n <= 1104);
    const bool source = e.source() == "clsEquation" || (e.source() == "clsEquation.Parse" && n == 6);
    return known && source && !e.description().empty();
}

// A number's bits or the error's number: what a solve came to.
std::string Outcome(quillet::clsEquation& eq) {
    try {
        const double y = eq.Solution();
        return std::to_string(std::bit_cast<std::uint64_t>(y));
    } catch (const quillet::RuntimeError& e) {
        return "error " + std::to_string(e.number());
    }
}

// What the same solves come to, one after another on one object.
std::vector<std::string> Outcomes(const std::string& formula, bool degrees) {
    constexpr double kXs[] = {0.0, -0.5, 1.0, 2.5, -3.0, 1e-200, 700.0, -700.0, 0.1, 7.0,
                              -0.0, 3.5, -1.0, 0.75, 12.0, 1e300, 0.25, -2.0, 5.0, 0.5};
    quillet::clsEquation eq;
    eq.Degrees(degrees);
    eq.Var("y2", 1e300);
    const quillet::expr::VarSlot x = eq.Slot("x");
    eq.Equation(formula);
    std::vector<std::string> outcomes;
    for (int round = 0; round < 2; ++round)
        for (double v : kXs) {
            eq.Var(x, v);
            outcomes.push_back(Outcome(eq));
        }
    return outcomes;
}

// Solved often enough, a formula runs as machine code: it must come to what the interpreter
// comes to at every X.
void CompareMachineCodeWithTheInterpreter(const std::string& formula, bool degrees) {
    quillet::expr::AllowNativeCode(false);
    const std::vector<std::string> interpreted = Outcomes(formula, degrees);
    quillet::expr::AllowNativeCode(true);
    if (Outcomes(formula, degrees) != interpreted) __builtin_trap();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    // The first byte picks the angle unit and the value of x; the rest is the formula.
    const std::uint8_t flags = data[0];
    std::string formula(reinterpret_cast<const char*>(data + 1), size - 1);

    quillet::clsEquation eq;
    eq.Degrees((flags & 1) != 0);
    eq.Var(" x ", static_cast<double>(static_cast<std::int8_t>(flags)) / 4);
    eq.Var("y2", 1e300);
    eq.Equation(formula);
    for (int pass = 0; pass < 2; ++pass) {
        try {
            if (!std::isfinite(eq.Solution())) __builtin_trap();
        } catch (const quillet::RuntimeError& e) {
            if (!Expected(e)) __builtin_trap();
        }
        // A second pass re-solves the parsed formula after a variable changed.
        eq.Var("x", -0.5);
    }
    CompareMachineCodeWithTheInterpreter(formula, (flags & 1) != 0);
    return 0;
}
