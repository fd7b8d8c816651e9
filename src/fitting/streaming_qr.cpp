#include "fitting/streaming_qr.h"

#include <cmath>

namespace quillet::fitting {

StreamingQr::StreamingQr(int width) : width_(width), r_(Eigen::MatrixXd::Zero(width, width)) {}

// Householder reflections on the stacked matrix [R; block]: column k's reflector touches only
// R(k, k) and the block's column k, since R is already triangular.
void StreamingQr::Fold(double* block, std::size_t rows) {
    const auto n = static_cast<Eigen::Index>(rows);
    for (int k = 0; k < width_; ++k) {
        Eigen::Map<Eigen::VectorXd> xk(block + static_cast<std::size_t>(k) * rows, n);
        const double below = xk.squaredNorm();
        if (below == 0) continue;
        const double top = r_(k, k);
        const double norm = std::sqrt(top * top + below);
        const double alpha = top > 0 ? -norm : norm;  // the new diagonal, away from cancellation
        const double v0 = top - alpha;                // reflector v = [v0; xk], H = I - 2 v v' / v'v
        const double beta = 2 / (v0 * v0 + below);
        for (int j = k + 1; j < width_; ++j) {
            Eigen::Map<Eigen::VectorXd> xj(block + static_cast<std::size_t>(j) * rows, n);
            const double s = beta * (v0 * r_(k, j) + xk.dot(xj));
            r_(k, j) -= s * v0;
            xj -= s * xk;
        }
        r_(k, k) = alpha;
    }
}

}  // namespace quillet::fitting
