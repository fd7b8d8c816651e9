#pragma once
// The fitted model as a formula in physical units, for the math-model file.
#include <string>
#include <vector>

#include "fitting/completed_fit.h"

namespace quillet::fitting {

// The formula's terms (the offset first, when the model has one), to be joined by "+".
// X appears only as "(x)", numbers carry no sign of their own and no bare "e", so the
// calculator's rewriting of the text (exponents, x, "(-") cannot change their meaning.
std::vector<std::string> FormulaTerms(const CompletedFit& fit);

}  // namespace quillet::fitting
