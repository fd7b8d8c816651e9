#include <gtest/gtest.h>

#include <string>

#include "env/errors.h"
#include "solve.h"

namespace quillet::testing {
namespace {

struct Case {
    std::string formula;
    int number;
    const char* description;
    const char* source = "clsEquation";
};

void PrintTo(const Case& c, std::ostream* os) { *os << c.formula.substr(0, 40); }

class Raises : public ::testing::TestWithParam<Case> {};

TEST_P(Raises, NumberSourceAndDescription) {
    const Case& c = GetParam();
    try {
        double v = Solve(c.formula);
        ADD_FAILURE() << "no error, got " << v;
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), c.number);
        EXPECT_EQ(e.source(), c.source);
        EXPECT_EQ(e.description(), c.description);
    }
}

std::string Nested(int depth) { return std::string(depth, '(') + "1" + std::string(depth, ')'); }

// One row per message and per odd way of reaching it; the golden results cover the common ones.
INSTANTIATE_TEST_SUITE_P(ClassErrors, Raises, ::testing::Values(
    Case{"1+2)", 1100, "Unbalanced parenthesis"},
    Case{"a mod(2)", 1101, "Sorry Undefined Function: amod()"},  // no blank behind mod: not rewritten
    Case{"7mod3", 1102, "Undefined Variable: mod3"},
    Case{"+1", 1103, "Invalid Equation"},                           // no unary plus
    Case{"", 1103, "Invalid Equation"},
    Case{"sin(,)", 1104, "Invalid arguments to function: sin()"}));

INSTANTIATE_TEST_SUITE_P(Arithmetic, Raises, ::testing::Values(
    Case{"1/0", 11, "Division by zero"},
    Case{"0/0", 6, "Overflow"},
    Case{"mod(7,0.4)", 11, "Division by zero"},  // the divisor rounds to 0
    Case{"sqr(-1)", 5, "Invalid procedure call or argument"},
    Case{"1.5>400", 6, "Overflow"},
    Case{std::string(400, '9'), 6, "Overflow"},
    Case{"2147483647.5\\1", 6, "Overflow"},     // rounds to the even 2147483648
    Case{"-2147483648\\-1", 6, "Overflow"},
    Case{Nested(4681), 6, "Overflow", "clsEquation.Parse"}));

TEST(Limits, TheLargestValuesThatFitStillEvaluate) {
    const std::pair<std::string, double> cases[] = {
        {Nested(4680), 1},                        // the deepest nesting that fits sixteen bits
        {"0." + std::string(400, '0') + "1", 0},  // too small to represent: zero
        {"2147483647.4\\1", 2147483647},          // the largest long divides without overflow
        {"-2147483648\\1", -2147483648.0},
    };
    for (const auto& [formula, expected] : cases) EXPECT_EQ(Solve(formula), expected) << formula.substr(0, 40);
}

}  // namespace
}  // namespace quillet::testing
