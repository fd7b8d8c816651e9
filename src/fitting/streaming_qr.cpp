#include "fitting/streaming_qr.h"

#include <cmath>

#include "fitting/dot.h"

namespace quillet::fitting {

namespace {

// |x| without overflow or underflow on the way: a plain sum of squares where it is safe
// (a bell far from its centre leaves values near 1e-160, whose squares vanish).
double Norm(const double* x, std::size_t n) {
    const double squares = Dot(x, x, n);
    if (squares > 1e-280 && squares < 1e280) return std::sqrt(squares);
    return Eigen::Map<const Eigen::VectorXd>(x, static_cast<Eigen::Index>(n)).stableNorm();
}

// Householder reflections on the stacked matrix [R; block]: column k's reflector touches only
// R(k, k) and the block's column k, since R is already triangular. The reflector is scaled so
// that its first element is 1 (v = [1; x / (top - beta)]), which keeps every element at most 1.
[[gnu::always_inline]] inline void FoldRows(Eigen::MatrixXd& r, int width, double* block, std::size_t rows) {
    for (int k = 0; k < width; ++k) {
        double* v = block + static_cast<std::size_t>(k) * rows;
        const double below = Norm(v, rows);
        if (below == 0) continue;
        const double top = r(k, k);
        const double beta = top > 0 ? -std::hypot(top, below) : std::hypot(top, below);  // the new diagonal
        const double tau = (beta - top) / beta;
        const double scale = 1 / (top - beta);  // one division, not one per row
        for (std::size_t i = 0; i < rows; ++i) v[i] *= scale;
        r(k, k) = beta;
        for (int j = k + 1; j < width; ++j) {
            double* x = block + static_cast<std::size_t>(j) * rows;
            const double s = tau * (r(k, j) + Dot(x, v, rows));
            r(k, j) -= s;
            for (std::size_t i = 0; i < rows; ++i) x[i] -= s * v[i];
        }
    }
}

QUILLET_WIDE_VECTORS void FoldRowsWide(Eigen::MatrixXd& r, int width, double* block, std::size_t rows) {
    FoldRows(r, width, block, rows);
}

void FoldRowsPlain(Eigen::MatrixXd& r, int width, double* block, std::size_t rows) {
    FoldRows(r, width, block, rows);
}

}  // namespace

StreamingQr::StreamingQr(int width) : width_(width), r_(Eigen::MatrixXd::Zero(width, width)) {}

void StreamingQr::Fold(double* block, std::size_t rows) {
    (HasWideVectors() ? FoldRowsWide : FoldRowsPlain)(r_, width_, block, rows);
}

// R'R is the other part's X'X: its rows stand for all of them.
void StreamingQr::Merge(const StreamingQr& other) {
    Eigen::MatrixXd rows = other.r_;
    Fold(rows.data(), static_cast<std::size_t>(width_));
}

}  // namespace quillet::fitting
