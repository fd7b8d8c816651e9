#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "solve.h"

namespace quillet::testing {
namespace {

// The golden results hold operators, functions and precedence to their bits; these rows are
// the parsing rules its generated formulas do not reach.
TEST(Formulas, BlanksArgumentsAndConstantsFollowTheParsingRules) {
    const std::pair<const char*, double> cases[] = {
        {"1 2", 12},           // blanks are skipped, even inside a number
        {"si n(0)+1", 1},      // and inside a function's name
        {"x y", 7},            // so this is the name xy
        {"max(1,2,3)+5", 3},   // the unused middle argument stays and is taken by "+"
        {"pi", 3.14159265358979},  // a variable cannot hide a constant
    };
    for (const auto& [formula, expected] : cases)
        EXPECT_EQ(Solve(formula, {{"x", 3}, {"xy", 7}, {"pi", 3}}), expected) << formula;
}

TEST(Random, SeedRules) {
    EXPECT_EQ(Solve("rnd(-3)"), Solve("rnd(-3)"));  // a negative seed repeats its number
    EXPECT_NE(Solve("rnd(-3)"), Solve("rnd(-4)"));
    EXPECT_EQ(Solve("rnd(1)-rnd(0)"), 0);           // 0 repeats the last number
    EXPECT_NE(Solve("rnd(1)-rnd(1)"), 0);           // a positive seed gives the next
    EXPECT_EQ(Solve("rnd(-2)+rnd(1)"), Solve("rnd(-2)+rnd"));
}

}  // namespace
}  // namespace quillet::testing
