#include <gtest/gtest.h>

#include <string>

#include "solve.h"

namespace quillet::testing {
namespace {

class Precedence : public ::testing::TestWithParam<FormulaCase> {};

TEST_P(Precedence, EvaluatesInPriorityOrder) {
    EXPECT_DOUBLE_EQ(Solve(GetParam().formula, {{"x", 3}, {"x2", 5}, {"xy", 7}}), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(PowerAndExponents, Precedence, ::testing::Values(
    FormulaCase{"2^3^2", 64},        // left-associative
    FormulaCase{"-2^2", -4},         // "^" before the unary minus
    FormulaCase{"2^-1", 0.5},        // a minus behind "^" is unary and evaluated first
    FormulaCase{"--2", 2},
    FormulaCase{"2*-3", -6},
    FormulaCase{"1.5>3", 1500},      // ">" and "<" carry decimal exponents
    FormulaCase{"2<3", 0.002},
    FormulaCase{"2.5>-3^2", 6.25e-6},
    FormulaCase{"2^2>1", 40},        // one priority: left to right
    FormulaCase{"1+2>1", 21}));      // the exponent binds before "+"

INSTANTIATE_TEST_SUITE_P(ProductsAndRemainders, Precedence, ::testing::Values(
    FormulaCase{"8-2-1", 5},
    FormulaCase{"8/4/2", 1},
    FormulaCase{"10-7%4", 7},        // "%" before "-"
    FormulaCase{"2*5%3", 1},         // "*" before "%"
    FormulaCase{"7 mod 3*2", 1},     // " mod " is "%"
    FormulaCase{"10\\3", 3},
    FormulaCase{"2.5\\1", 2},        // halves go to the even neighbour before dividing
    FormulaCase{"3.5\\1", 4},
    FormulaCase{"-7\\2", -3},        // the quotient is truncated toward zero
    FormulaCase{"-7%3", -1},         // the remainder takes the sign of the dividend
    FormulaCase{"7%-3", 1}));

INSTANTIATE_TEST_SUITE_P(ParenthesesAndImpliedProduct, Precedence, ::testing::Values(
    FormulaCase{"2*(3+4)^2", 98},
    FormulaCase{"()+4", 4},          // an empty pair is 0
    FormulaCase{"(-3)", -3},
    FormulaCase{"2x", 6},
    FormulaCase{"2(x+1)", 8},
    FormulaCase{"x2", 5},            // digits continue a name
    FormulaCase{"x y", 7}));         // blanks are skipped, so this is the name xy

INSTANTIATE_TEST_SUITE_P(BlanksAndCase, Precedence, ::testing::Values(
    FormulaCase{"1 2", 12},
    FormulaCase{"1 . 5", 1.5},
    FormulaCase{"si n(0)+1", 1},
    FormulaCase{"m a x(1,2)", 2},
    FormulaCase{"SIN(0)+X", 3}));    // the formula is lower-cased

INSTANTIATE_TEST_SUITE_P(Arguments, Precedence, ::testing::Values(
    FormulaCase{"max(4)", 4},           // one argument serves as both
    FormulaCase{"abs(-1,2)", 1},        // a one-argument function uses the first
    FormulaCase{"max(1,2,3)", 3},       // first and last argument
    FormulaCase{"max(-1,-2)", -1},
    FormulaCase{"max(1,2,3)+5", 3}));   // the unused middle argument stays and is taken by "+"

}  // namespace
}  // namespace quillet::testing
