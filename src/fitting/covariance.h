#pragma once
// Parameter standard errors of a least-squares fit from its Jacobian at the minimum.
#include <string>
#include <vector>

namespace quillet::fitting {

// `jacobian` holds n rows of `np` derivatives each (row-major). Returns
// sqrt(variance * diag((J'J)^-1)), or nothing with `note` set when J'J cannot be inverted.
std::vector<double> StandardErrors(const std::vector<double>& jacobian, int np, double variance, std::string& note);

}  // namespace quillet::fitting
