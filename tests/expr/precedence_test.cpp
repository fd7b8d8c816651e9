#include <gtest/gtest.h>

#include <string>

#include "solve.h"

namespace quillet::testing {
namespace {

struct Case {
    const char* formula;
    double expected;
};

void PrintTo(const Case& c, std::ostream* os) { *os << c.formula; }

class Precedence : public ::testing::TestWithParam<Case> {};

TEST_P(Precedence, EvaluatesInPriorityOrder) {
    EXPECT_DOUBLE_EQ(Solve(GetParam().formula, {{"x", 3}, {"x2", 5}, {"xy", 7}}), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(PowerAndExponents, Precedence, ::testing::Values(
    Case{"2^3^2", 64},        // left-associative
    Case{"-2^2", -4},         // "^" before the unary minus
    Case{"-x^2", -9},
    Case{"2^-1", 0.5},        // a minus behind "^" is unary and evaluated first
    Case{"--2", 2},
    Case{"2*-3", -6},
    Case{"1.5>3", 1500},      // ">" and "<" carry decimal exponents
    Case{"2<3", 0.002},
    Case{"1>-3", 0.001},
    Case{"2.5>-3^2", 6.25e-6},
    Case{"2^2>1", 40},        // one priority: left to right
    Case{"1+2>1", 21}));      // the exponent binds before "+"

INSTANTIATE_TEST_SUITE_P(ProductsAndRemainders, Precedence, ::testing::Values(
    Case{"1+2*3", 7},
    Case{"8-2-1", 5},
    Case{"8/4/2", 1},
    Case{"10-7%4", 7},        // "%" before "-"
    Case{"2*5%3", 1},         // "*" before "%"
    Case{"7 mod 3*2", 1},     // " mod " is "%"
    Case{"7 mod 3", 1},
    Case{"10\\3", 3},
    Case{"2.5\\1", 2},        // halves go to the even neighbour before dividing
    Case{"3.5\\1", 4},
    Case{"-7\\2", -3},        // the quotient is truncated toward zero
    Case{"-7%3", -1},         // the remainder takes the sign of the dividend
    Case{"7%-3", 1}));

INSTANTIATE_TEST_SUITE_P(ParenthesesAndImpliedProduct, Precedence, ::testing::Values(
    Case{"(1+2)*3", 9},
    Case{"2*(3+4)^2", 98},
    Case{"((2))", 2},
    Case{"()+4", 4},          // an empty pair is 0
    Case{"(-3)", -3},
    Case{"2x", 6},
    Case{"2 x", 6},
    Case{"2(x+1)", 8},
    Case{"x2", 5},            // digits continue a name
    Case{"x y", 7}));         // blanks are skipped, so this is the name xy

INSTANTIATE_TEST_SUITE_P(BlanksAndCase, Precedence, ::testing::Values(
    Case{"1 2", 12},
    Case{"1 . 5", 1.5},
    Case{"si n(0)+1", 1},
    Case{"m a x(1,2)", 2},
    Case{"SIN(0)+X", 3}));    // the formula is lower-cased

INSTANTIATE_TEST_SUITE_P(Arguments, Precedence, ::testing::Values(
    Case{"max(4)", 4},           // one argument serves as both
    Case{"abs(-1,2)", 1},        // a one-argument function uses the first
    Case{"max(1,2,3)", 3},       // first and last argument
    Case{"min(5,1,9)", 5},
    Case{"max(-1,-2)", -1},
    Case{"max(1,2,3)+5", 3}));   // the unused middle argument stays and is taken by "+"

}  // namespace
}  // namespace quillet::testing
