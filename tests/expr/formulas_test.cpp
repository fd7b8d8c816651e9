#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <string>

#include "solve.h"

namespace quillet::testing {
namespace {

class Formulas : public ::testing::TestWithParam<FormulaCase> {};

TEST_P(Formulas, GiveTheirValue) {
    const FormulaCase& c = GetParam();
    EXPECT_DOUBLE_EQ(Solve(c.formula, {{"x", 3}, {"x2", 5}, {"xy", 7}}, c.degrees), c.expected);
}

INSTANTIATE_TEST_SUITE_P(PowerAndExponents, Formulas, ::testing::Values(
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

INSTANTIATE_TEST_SUITE_P(ProductsAndRemainders, Formulas, ::testing::Values(
    FormulaCase{"8-2-1", 5},
    FormulaCase{"8/4/2", 1},
    FormulaCase{"10-7%4", 7},        // "%" before "-"
    FormulaCase{"2*5%3", 1},         // "*" before "%"
    FormulaCase{"7 mod 3*2", 1},     // " mod " is "%"
    FormulaCase{"2.5\\1", 2},        // halves go to the even neighbour before dividing
    FormulaCase{"3.5\\1", 4},
    FormulaCase{"-7\\2", -3},        // the quotient is truncated toward zero
    FormulaCase{"-7%3", -1},         // the remainder takes the sign of the dividend
    FormulaCase{"7%-3", 1}));

INSTANTIATE_TEST_SUITE_P(ParenthesesAndImpliedProduct, Formulas, ::testing::Values(
    FormulaCase{"2*(3+4)^2", 98},
    FormulaCase{"()+4", 4},          // an empty pair is 0
    FormulaCase{"2x", 6},
    FormulaCase{"2(x+1)", 8},
    FormulaCase{"x2", 5},            // digits continue a name
    FormulaCase{"x y", 7}));         // blanks are skipped, so this is the name xy

INSTANTIATE_TEST_SUITE_P(BlanksAndCase, Formulas, ::testing::Values(
    FormulaCase{"1 2", 12},
    FormulaCase{"1 . 5", 1.5},
    FormulaCase{"si n(0)+1", 1},
    FormulaCase{"m a x(1,2)", 2},
    FormulaCase{"SIN(0)+X", 3}));    // the formula is lower-cased

INSTANTIATE_TEST_SUITE_P(Arguments, Formulas, ::testing::Values(
    FormulaCase{"max(4)", 4},           // one argument serves as both
    FormulaCase{"abs(-1,2)", 1},        // a one-argument function uses the first
    FormulaCase{"max(1,2,3)", 3},       // first and last argument
    FormulaCase{"max(-1,-2)", -1},
    FormulaCase{"max(1,2,3)+5", 3}));   // the unused middle argument stays and is taken by "+"

// The golden results hold every function to its bits; these rows are the functions' own
// definitions, where they differ from the textbook or from each other.
INSTANTIATE_TEST_SUITE_P(FunctionsInRadians, Formulas, ::testing::Values(
    FormulaCase{"fix(-2.5)", -2},
    FormulaCase{"int(-2.5)", -3},
    FormulaCase{"sgn(0)", 0},
    FormulaCase{"mod(-7,3)", -1},
    FormulaCase{"mod(7.5,2.5)", 0},      // 8 mod 2 after rounding halves to even
    FormulaCase{"logn(8,2)", 3},
    FormulaCase{"arcsec(-2)", -3.9986646014399243},
    FormulaCase{"arccosec(-2)", -3.9986646014399243},
    FormulaCase{"arccotan(0.5)", 2.0344439357957027},
    FormulaCase{"cosh(0.5)", 0.4621171572600098}));

// Trigonometric functions convert with the factors 0.017453292519943278 and
// 57.29577951308238; hyperbolic functions, logarithms, deg and rad ignore the switch.
INSTANTIATE_TEST_SUITE_P(FunctionsInDegrees, Formulas, ::testing::Values(
    FormulaCase{"atn(1)", 45.00000000000004, true},
    FormulaCase{"cos(60)", 0.5000000000000009, true},
    FormulaCase{"sin(30)", 0.49999999999999956, true},
    FormulaCase{"tan(45)", 0.9999999999999983, true},
    FormulaCase{"arcsin(0.5)", 30.000000000000036, true},
    FormulaCase{"arcsec(2)", 49.10660535086915, true},
    FormulaCase{"arccotan(1)", 90.99989847941448, true},
    FormulaCase{"sinh(0.5)", 0.5210953054937474, true},
    FormulaCase{"deg(0.5)", 28.64788975654119, true},
    FormulaCase{"rad(0.5)", 0.008726646259971639, true}));

TEST(Constants, HaveTheirFixedPrecision) {
    EXPECT_EQ(Solve("e"), 2.718281828);
    EXPECT_EQ(Solve("pi"), 3.14159265358979);
    EXPECT_EQ(Solve("w"), 6.28318530717958);
    EXPECT_EQ(Solve("deg(1)"), 57.29577951308238);
    EXPECT_EQ(Solve("rad(1)"), 0.017453292519943278);
}

TEST(Constants, AVariableCannotHideAConstant) { EXPECT_EQ(Solve("pi", {{"pi", 3}}), 3.14159265358979); }

TEST(Random, SeedRules) {
    EXPECT_EQ(Solve("rnd(-3)"), Solve("rnd(-3)"));  // a negative seed repeats its number
    EXPECT_NE(Solve("rnd(-3)"), Solve("rnd(-4)"));
    EXPECT_EQ(Solve("rnd(1)-rnd(0)"), 0);           // 0 repeats the last number
    EXPECT_NE(Solve("rnd(1)-rnd(1)"), 0);           // a positive seed gives the next
    EXPECT_EQ(Solve("rnd(-2)+rnd(1)"), Solve("rnd(-2)+rnd"));
}

// rnd is a single-precision number in [0, 1); random(2,3) lies in [2, 3); rand(10) is whole.
TEST(Random, NumbersStayInTheirRanges) {
    clsEquation unit, range, whole;
    unit.Equation("rnd");
    range.Equation("random(2,3)");
    whole.Equation("rand(10)");
    std::set<double> units, wholes;
    for (int i = 0; i < 2000; ++i) {
        unit.Solve();
        range.Solve();
        whole.Solve();
        const double u = unit.Solution(), r = range.Solution(), w = whole.Solution();
        ASSERT_TRUE(u >= 0 && u < 1 && static_cast<double>(static_cast<float>(u)) == u) << u;
        ASSERT_TRUE(r >= 2 && r < 3) << r;
        ASSERT_EQ(w, std::floor(w));
        units.insert(u);
        wholes.insert(w);
    }
    EXPECT_GT(units.size(), 1990u);
    EXPECT_EQ(wholes, (std::set<double>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

}  // namespace
}  // namespace quillet::testing
