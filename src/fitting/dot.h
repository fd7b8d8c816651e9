#pragma once
// The dot product of two columns of a block, in sixteen partial sums so that the loop
// vectorises into several independent chains of additions, without a reordering of one sum
// that the compiler may not make. On the few columns a fit has, this beats Eigen's matrix
// products, whose packing costs more than it saves.
#include <cstddef>

// Hot loops are built twice, for AVX2 and for any processor, and the first runs where the C
// library found AVX2 at start. Only AVX2 and not FMA: a fused multiply-add rounds once where the
// plain build rounds twice, so both builds give the same numbers.
#if defined(__GNUC__) && defined(__x86_64__)
#define QUILLET_WIDE_VECTORS __attribute__((target("avx2")))
#else
#define QUILLET_WIDE_VECTORS
#endif

namespace quillet::fitting {

// Whether the loops built for AVX2 can run here.
bool HasWideVectors();

inline double Dot(const double* x, const double* y, std::size_t n) {
    constexpr std::size_t kLanes = 16;
    double s[kLanes] = {};
    std::size_t i = 0;
    for (; i + kLanes <= n; i += kLanes)
        for (std::size_t l = 0; l < kLanes; ++l) s[l] += x[i + l] * y[i + l];
    for (std::size_t l = 0; i < n; ++i, ++l) s[l] += x[i] * y[i];
    for (std::size_t width = kLanes / 2; width > 0; width /= 2)
        for (std::size_t l = 0; l < width; ++l) s[l] += s[l + width];
    return s[0];
}

// out(i, j) += x_i . y_j for the columns of two blocks of `rows` rows (column-major, leading
// dimension `rows`); out is xColumns x yColumns, column-major.
void AddColumnProducts(const double* x, int xColumns, const double* y, int yColumns, std::size_t rows, double* out);

}  // namespace quillet::fitting
