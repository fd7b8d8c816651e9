#include "fitting/shortest_text.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstring>
#include <random>
#include <string>

namespace quillet::fitting {
namespace {

std::string Mine(double v) {
    char buf[kShortestRoom];
    return std::string(buf, WriteShortest(buf, v));
}

std::string Standard(double v) {
    char buf[32];
    return std::string(buf, std::to_chars(buf, buf + sizeof buf, v).ptr);
}

// The text must be std::to_chars' own: the same digits and the same choice of fixed or
// scientific notation, on the decimals data files hold, around the edges of the fast way, and
// on doubles of every kind.
TEST(ShortestText, WritesWhatToCharsWrites) {
    for (double v : {0.0, -0.0, 1.0, 0.1, 0.3, 10.0, 1e-7, 9.9999999e-8, 1e9, 999999999.0, 999999999.5, 123456789.0,
                     0.0001, 1e-05, 1e8, 12345678.9, 0.000123456789, 5e-324, 1.7976931348623157e308, 1e16, 2.5e-300,
                     6.660711, 0.05, 100.0, 1234.5678})
        for (double s : {1.0, -1.0}) EXPECT_EQ(Mine(s * v), Standard(s * v)) << s * v;
    std::mt19937_64 rng(11);
    const double powers[] = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16};
    for (int i = 0; i < 300000; ++i) {
        const auto digits = static_cast<int>(1 + rng() % 9);
        const double m = static_cast<double>(rng() % static_cast<std::uint64_t>(powers[digits]));
        const double decimal = (rng() & 1 ? 1 : -1) * m / powers[rng() % 17];
        ASSERT_EQ(Mine(decimal), Standard(decimal)) << decimal;
        std::uint64_t bits = rng();
        double any;
        std::memcpy(&any, &bits, sizeof any);
        if (std::isfinite(any)) {
            ASSERT_EQ(Mine(any), Standard(any)) << any;
        }
    }
}

}  // namespace
}  // namespace quillet::fitting
