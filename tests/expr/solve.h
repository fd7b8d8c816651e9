#pragma once
// Evaluates one formula through the public face of the class, as a client does.
#include <initializer_list>
#include <string>
#include <utility>

#include "expr/equation.h"

namespace quillet::testing {

inline double Solve(const std::string& formula, std::initializer_list<std::pair<const char*, double>> vars = {}) {
    clsEquation eq;
    for (const auto& [name, value] : vars) eq.Var(name, value);
    eq.Equation(formula);
    return eq.Solution();
}

}  // namespace quillet::testing
