#include "fitting/streaming_qr.h"

#include <cmath>

#include "fitting/dot.h"

namespace quillet::fitting {

namespace {

// |x| without overflow or underflow on the way: a plain sum of squares where it is safe
// (a bell far from its centre leaves values near 1e-160, whose squares vanish).
double Norm(const Eigen::Map<Eigen::VectorXd>& x) {
    const double squares = x.squaredNorm();
    if (squares > 1e-280 && squares < 1e280) return std::sqrt(squares);
    return x.stableNorm();
}

}  // namespace

StreamingQr::StreamingQr(int width)
    : width_(width), r_(Eigen::MatrixXd::Zero(width, width)), scratch_(static_cast<std::size_t>(width)) {}

// Householder reflections on the stacked matrix [R; block]: column k's reflector touches only
// R(k, k) and the block's column k, since R is already triangular. The reflector is scaled so
// that its first element is 1 (v = [1; x / (top - beta)]), which keeps every element at most 1.
void StreamingQr::Fold(double* block, std::size_t rows) {
    const auto n = static_cast<Eigen::Index>(rows);
    for (int k = 0; k < width_; ++k) {
        Eigen::Map<Eigen::VectorXd> xk(block + static_cast<std::size_t>(k) * rows, n);
        const double below = Norm(xk);
        if (below == 0) continue;
        const double top = r_(k, k);
        const double beta = top > 0 ? -std::hypot(top, below) : std::hypot(top, below);  // the new diagonal
        const double tau = (beta - top) / beta;
        xk *= 1 / (top - beta);  // one division, not one per row
        r_(k, k) = beta;
        const int rest = width_ - k - 1;
        if (rest == 0) continue;
        // All the columns to the right at once: s = tau (R(k, k+1:)' + X(:, k+1:)' v).
        Eigen::Map<Eigen::MatrixXd> right(block + static_cast<std::size_t>(k + 1) * rows, n, rest);
        Eigen::Map<Eigen::VectorXd> s(scratch_.data(), rest);
        for (int j = 0; j < rest; ++j) s(j) = tau * (r_(k, k + 1 + j) + Dot(right.col(j).data(), xk.data(), rows));
        r_.row(k).tail(rest) -= s.transpose();
        right.noalias() -= xk * s.transpose();
    }
}

// R'R is the other part's X'X: its rows stand for all of them.
void StreamingQr::Merge(const StreamingQr& other) {
    Eigen::MatrixXd rows = other.r_;
    Fold(rows.data(), static_cast<std::size_t>(width_));
}

}  // namespace quillet::fitting
