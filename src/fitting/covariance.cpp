#include "fitting/covariance.h"

#include <Eigen/Dense>
#include <cmath>

namespace quillet::fitting {

namespace {

// Below this ratio of the smallest to the largest eigenvalue of J'J the parameters are taken
// as dependent: their errors would be rounding noise.
constexpr double kMinReciprocalCondition = 1e-14;

}  // namespace

std::vector<double> StandardErrors(const Eigen::MatrixXd& r, double variance, std::string& note) {
    const Eigen::Index cols = r.cols();
    if (cols == 0 || !(variance >= 0) || !std::isfinite(variance)) {
        note = "there are no more points than parameters";
        return {};
    }
    // The singular values of R are those of J, without squaring J's condition number.
    Eigen::JacobiSVD<Eigen::MatrixXd> svd(r, Eigen::ComputeFullV);
    const Eigen::VectorXd s = svd.singularValues();
    const double largest = s(0), smallest = s(cols - 1);
    if (!(largest > 0) || !std::isfinite(largest) ||
        (smallest * smallest) / (largest * largest) < kMinReciprocalCondition) {
        note = "the parameters are not independent at the fitted values (the Jacobian is rank deficient)";
        return {};
    }
    // (J'J)^-1 = V S^-2 V'; only its diagonal is needed.
    const Eigen::MatrixXd scaled = svd.matrixV() * s.cwiseInverse().asDiagonal();
    std::vector<double> se(static_cast<std::size_t>(cols));
    for (Eigen::Index k = 0; k < cols; ++k)
        se[static_cast<std::size_t>(k)] = std::sqrt(scaled.row(k).squaredNorm() * variance);
    return se;
}

}  // namespace quillet::fitting
