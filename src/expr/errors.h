#pragma once
// The numbered errors of the expression class and the sources they carry.
#include <string>

#include "env/errors.h"

namespace quillet::expr {

inline constexpr const char* kSource = "clsEquation";
// A parse failure other than unbalanced parentheses is passed on under this source.
inline constexpr const char* kParseSource = "clsEquation.Parse";

namespace eqerr {
inline constexpr int UnbalancedParenthesis = 1100;
inline constexpr int UndefinedFunction = 1101;
inline constexpr int UndefinedVariable = 1102;
inline constexpr int InvalidEquation = 1103;
inline constexpr int InvalidArguments = 1104;
}  // namespace eqerr

// Raises `number` with the source "clsEquation"; an empty description takes the classic one.
[[noreturn]] inline void RaiseEq(int number, const std::string& description = {}) {
    Raise(number, kSource, description);
}

[[noreturn]] inline void RaiseInvalidEquation() { RaiseEq(eqerr::InvalidEquation, "Invalid Equation"); }

}  // namespace quillet::expr
