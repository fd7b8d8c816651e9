#include "fitting/dot.h"

namespace quillet::fitting {

QUILLET_WIDE_VECTORS void AddColumnProducts(const double* x, int xColumns, const double* y, int yColumns,
                                            std::size_t rows, double* out) {
    for (int j = 0; j < yColumns; ++j)
        for (int i = 0; i < xColumns; ++i)
            out[static_cast<std::size_t>(j) * static_cast<std::size_t>(xColumns) + static_cast<std::size_t>(i)] +=
                Dot(x + static_cast<std::size_t>(i) * rows, y + static_cast<std::size_t>(j) * rows, rows);
}

}  // namespace quillet::fitting
