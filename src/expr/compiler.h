#pragma once
// Turns a parsed formula into a program: the collapse of the token list is walked once,
// with registers in place of values, and every operation it would perform becomes a step.
#include "expr/formula.h"
#include "expr/program.h"
#include "expr/variables.h"

namespace quillet::expr {

// A failure that the formula alone decides (an entry that is not a number where one is
// needed, 1101, 1104) becomes a Raise step where the collapse would meet it, after every
// step that could fail first. Variables get slots in `variables`, undefined when new.
Program Compile(const ParsedFormula& formula, Variables& variables);

}  // namespace quillet::expr
