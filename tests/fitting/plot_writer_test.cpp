#include "fitting/plot_writer.h"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>

#include "model/catalogue.h"

namespace quillet::fitting {
namespace {

CompletedFit Rows(std::size_t n) {
    CompletedFit fit{{}, {}, Model(*FindModelKind(model::Power), 1), {}, {}, {}, {}, 0, 0, 0, {}};
    for (std::size_t i = 0; i < n; ++i) {
        fit.data.x.push_back(static_cast<double>(i));
        fit.data.y.push_back(0.1 * static_cast<double>(i));
        fit.fitted.push_back(0.1 * static_cast<double>(i) + 1e-3);
    }
    return fit;
}

// Small and large data (the latter formatted by two threads) come out whole, row by row in
// order, each number read back exactly.
TEST(PlotRows, EveryRowComesOnceInOrder) {
    for (std::size_t n : {1u, 1023u, 1025u, 40000u, 70001u}) {
        const CompletedFit fit = Rows(n);
        std::string text;
        WritePlot(fit, [&](std::string_view piece) { text.append(piece); });
        std::istringstream in(text.substr(text.find("residual\r\n") + 10));
        std::size_t i = 0;
        for (double x, y, f, r; in >> x >> y >> f >> r; ++i) {
            ASSERT_EQ(x, fit.data.x[i]) << n;
            ASSERT_EQ(f, fit.fitted[i]) << n;
            ASSERT_EQ(r, fit.data.y[i] - fit.fitted[i]) << n;
        }
        EXPECT_EQ(i, n);
    }
}

// A full disk stops the writing with its error, whichever thread had the piece.
TEST(PlotRows, AFailingSinkStopsTheWriting) {
    const CompletedFit fit = Rows(70001);
    for (int failAt : {1, 2, 3, 30}) {
        int calls = 0;
        EXPECT_THROW(WritePlot(fit,
                               [&](std::string_view) {
                                   if (++calls == failAt) throw std::runtime_error("disk full");
                               }),
                     std::runtime_error)
            << failAt;
    }
}

}  // namespace
}  // namespace quillet::fitting
