#include "fitting/dot.h"

#if defined(__x86_64__) && defined(__GLIBC__) && __has_include(<sys/platform/x86.h>)
#include <sys/platform/x86.h>
#endif

namespace quillet::fitting {

namespace {

[[gnu::always_inline]] inline void AddProducts(const double* x, int xColumns, const double* y, int yColumns,
                                               std::size_t rows, double* out) {
    for (int j = 0; j < yColumns; ++j)
        for (int i = 0; i < xColumns; ++i)
            out[static_cast<std::size_t>(j) * static_cast<std::size_t>(xColumns) + static_cast<std::size_t>(i)] +=
                Dot(x + static_cast<std::size_t>(i) * rows, y + static_cast<std::size_t>(j) * rows, rows);
}

QUILLET_WIDE_VECTORS void AddProductsWide(const double* x, int xColumns, const double* y, int yColumns,
                                          std::size_t rows, double* out) {
    AddProducts(x, xColumns, y, yColumns, rows, out);
}

void AddProductsPlain(const double* x, int xColumns, const double* y, int yColumns, std::size_t rows, double* out) {
    AddProducts(x, xColumns, y, yColumns, rows, out);
}

}  // namespace

// The C library's record of the processor: no CPUID instruction of our own, which a virtual
// machine traps at a cost a small fit notices.
bool HasWideVectors() {
#if defined(__x86_64__) && defined(__GLIBC__) && __has_include(<sys/platform/x86.h>)
    static const bool wide = CPU_FEATURE_ACTIVE(AVX2);
    return wide;
#else
    return false;
#endif
}

void AddColumnProducts(const double* x, int xColumns, const double* y, int yColumns, std::size_t rows,
                       double* out) {
    (HasWideVectors() ? AddProductsWide : AddProductsPlain)(x, xColumns, y, yColumns, rows, out);
}

}  // namespace quillet::fitting
