#include "fitting/covariance.h"

#include <Eigen/Dense>
#include <cmath>

namespace quillet::fitting {

namespace {

// Below this ratio of the smallest to the largest eigenvalue of J'J the parameters are taken
// as dependent: their errors would be rounding noise.
constexpr double kMinReciprocalCondition = 1e-14;

using RowMajor = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;

}  // namespace

std::vector<double> StandardErrors(const std::vector<double>& jacobian, int np, double variance, std::string& note) {
    const Eigen::Index cols = np;
    const Eigen::Index rows = cols > 0 ? static_cast<Eigen::Index>(jacobian.size()) / cols : 0;
    if (rows < cols || cols == 0) {
        note = "there are fewer points than parameters";
        return {};
    }
    // QR first, so that the singular values come from R (np x np) without squaring J's
    // condition number, and the SVD is of a small matrix.
    const Eigen::Map<const RowMajor> j(jacobian.data(), rows, cols);
    Eigen::HouseholderQR<Eigen::MatrixXd> qr(j);
    const Eigen::MatrixXd r = qr.matrixQR().topRows(cols).triangularView<Eigen::Upper>();
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
