#pragma once
// Evaluates one formula through the public face of the class, as a client does.
#include <initializer_list>
#include <ostream>
#include <string>
#include <utility>

#include "expr/equation.h"

namespace quillet::testing {

inline double Solve(const std::string& formula,
                    std::initializer_list<std::pair<const char*, double>> vars = {}, bool degrees = false) {
    clsEquation eq;
    eq.Degrees(degrees);
    for (const auto& [name, value] : vars) eq.Var(name, value);
    eq.Equation(formula);
    return eq.Solution();
}

// A formula and the value it must give, in radians unless `degrees`.
struct FormulaCase {
    const char* formula;
    double expected;
    bool degrees = false;
};

inline void PrintTo(const FormulaCase& c, std::ostream* os) { *os << c.formula << (c.degrees ? " in degrees" : ""); }

}  // namespace quillet::testing
