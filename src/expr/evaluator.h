#pragma once
// Walks the evaluation order of a parsed formula and collapses its token list, step by
// step, into one number.
#include "expr/formula.h"
#include "expr/random.h"
#include "expr/variables.h"

namespace quillet::expr {

struct EvaluationContext {
    const Variables& variables;
    bool degrees;
    SingleRandom& random;
};

// Raises the numbered errors of the expression class (source "clsEquation").
double Evaluate(const ParsedFormula& formula, const EvaluationContext& context);

}  // namespace quillet::expr
