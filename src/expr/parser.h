#pragma once
// Cuts a formula into the flat token list and derives the evaluation order from the
// priorities: 7 per open parenthesis plus a fixed step per kind of token.
#include <string>

#include "expr/formula.h"

namespace quillet::expr {

// Every " mod " (blanks included, exact case) by "%", from left to right.
void RewriteMod(std::string& formula);

// Raises 1100 "Unbalanced parenthesis" when the parentheses do not balance, and any other
// failure (a priority beyond 16 bits: 6) with the source "clsEquation.Parse".
ParsedFormula ParseFormula(const std::string& formula);

}  // namespace quillet::expr
