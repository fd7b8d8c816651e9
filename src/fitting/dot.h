#pragma once
// The dot product of two columns of a block, in four partial sums so that the loop vectorises
// without a reordering of one sum that the compiler may not make. On the few columns a fit has,
// this beats Eigen's matrix products, whose packing costs more than it saves.
#include <cstddef>

// A hot loop built twice, for AVX2 and for any x86-64, and chosen when the program starts. Only
// AVX2 and not FMA: a fused multiply-add rounds once where the plain build rounds twice.
#if defined(__GNUC__) && defined(__x86_64__) && !defined(_WIN32) && defined(__OPTIMIZE__)
#define QUILLET_WIDE_VECTORS __attribute__((target_clones("avx2", "default")))
#else
#define QUILLET_WIDE_VECTORS
#endif

namespace quillet::fitting {

inline double Dot(const double* x, const double* y, std::size_t n) {
    double s0 = 0, s1 = 0, s2 = 0, s3 = 0;
    std::size_t i = 0;
    for (; i + 4 <= n; i += 4) {
        s0 += x[i] * y[i];
        s1 += x[i + 1] * y[i + 1];
        s2 += x[i + 2] * y[i + 2];
        s3 += x[i + 3] * y[i + 3];
    }
    for (; i < n; ++i) s0 += x[i] * y[i];
    return (s0 + s1) + (s2 + s3);
}

// out(i, j) += x_i . y_j for the columns of two blocks of `rows` rows (column-major, leading
// dimension `rows`); out is xColumns x yColumns, column-major.
void AddColumnProducts(const double* x, int xColumns, const double* y, int yColumns, std::size_t rows, double* out);

}  // namespace quillet::fitting
