#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <span>
#include <sstream>
#include <string>
#include <vector>

#include "env/errors.h"
#include "expr/equation.h"
#include "golden/golden_format.h"

namespace quillet::testing {
namespace {

// The array call over all of xs, resumed after each X that raised; that X is the variable's
// value after the error.
std::uint64_t SweepHash(clsEquation& eq, expr::VarSlot x, std::span<const double> xs) {
    std::vector<double> ys(xs.size());
    std::uint64_t hash = golden::kHashStart;
    for (std::size_t from = 0; from < xs.size();) {
        std::size_t failed = xs.size();
        std::string error;
        try {
            eq.Solutions(x, xs.subspan(from), std::span(ys).subspan(from));
        } catch (const RuntimeError& e) {
            failed = static_cast<std::size_t>(std::find(xs.begin() + from, xs.end(), eq.Var("x")) - xs.begin());
            error = golden::ErrorText(e);
        }
        for (; from < failed; ++from) golden::Hash(hash, golden::Bits(ys[from]));
        if (failed < xs.size()) golden::Hash(hash, error);
        from = failed + 1;
    }
    return hash;
}

std::vector<std::string> Fields(const std::string& line) {
    std::vector<std::string> fields;
    std::stringstream in(line);
    for (std::string f; std::getline(in, f, '\t');) fields.push_back(f);
    return fields;
}

// Each line was written by tools/expr-golden/generate.cpp: the formula solved three times on
// one object as X changes, the third time with q defined and Degrees flipped, then at the
// sweep's X values. Every other line goes through the array call.
TEST(GoldenResults, EveryGeneratedFormulaGivesItsRecordedResultBitForBit) {
#ifndef __GLIBC__
    GTEST_SKIP() << "the recorded bits come from the GNU C library's math functions";
#endif
    std::ifstream in(std::string(QUILLET_TEST_DATA) + "/expr/formulas.golden");
    ASSERT_TRUE(in) << "golden file missing";
    int lines = 0, mismatches = 0;
    for (std::string line; std::getline(in, line); ++lines) {
        const auto f = Fields(line);
        ASSERT_EQ(f.size(), 9u) << line;
        const bool degrees = f[0] == "1";
        clsEquation eq;
        eq.Degrees(degrees);
        eq.Var("y", 2.5);
        eq.Var("x2", 5);
        const expr::VarSlot x = eq.Slot("x");
        eq.Equation(f[1]);
        auto at = [&](double xv) {
            return golden::Outcome([&] {
                double y = 0;
                if (lines % 2) {
                    eq.Solutions(x, {&xv, 1}, {&y, 1});
                    return y;
                }
                eq.Var(x, xv);
                return eq.Solution();
            });
        };
        for (std::size_t solve = 0; solve < 3; ++solve) {
            if (solve == 2) {
                eq.Var("q", -0.75);
                eq.Degrees(!degrees);
            }
            const std::string got = at(std::strtod(f[2 + 2 * solve].c_str(), nullptr));
            if (got != f[3 + 2 * solve] && ++mismatches <= 10)
                ADD_FAILURE() << f[1] << " at x=" << f[2 + 2 * solve] << ": " << got << " instead of "
                              << f[3 + 2 * solve];
        }
        std::uint64_t hash = golden::kHashStart;
        if (lines % 2)
            hash = SweepHash(eq, x, golden::kSweepX);
        else
            for (double xv : golden::kSweepX) golden::Hash(hash, at(xv));
        char hex[20];
        std::snprintf(hex, sizeof hex, "%016llx", static_cast<unsigned long long>(hash));
        if (hex != f[8] && ++mismatches <= 10) ADD_FAILURE() << f[1] << ": the sweep's outcomes differ";
    }
    EXPECT_EQ(lines, 3000);
    EXPECT_EQ(mismatches, 0);
}

}  // namespace
}  // namespace quillet::testing
