// Any formula text must give a number or a numbered error: no crash, hang or stray exception.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>

#include "env/errors.h"
#include "expr/equation.h"

namespace {

// Only the class's own numbers and the arithmetic ones may come out, with the class as source.
bool Expected(const quillet::RuntimeError& e) {
    const int n = e.number();
    const bool known = n == 5 || n == 6 || n == 11 || (n >= 1100 && n <= 1104);
    const bool source = e.source() == "clsEquation" || (e.source() == "clsEquation.Parse" && n == 6);
    return known && source && !e.description().empty();
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
    return 0;
}
