#pragma once
// Standard errors of the fitted parameters.
#include <Eigen/Core>
#include <string>
#include <vector>

namespace quillet::fitting {

// The square roots of the diagonal of variance * (J'J)^-1, from the triangular factor R of the
// weighted Jacobian J (R'R = J'J). Empty, with `note` saying why, when the parameters are not
// independent.
std::vector<double> StandardErrors(const Eigen::MatrixXd& r, double variance, std::string& note);

}  // namespace quillet::fitting
