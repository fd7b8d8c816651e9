#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <string>

#include "solve.h"

namespace quillet::testing {
namespace {

class InRadians : public ::testing::TestWithParam<FormulaCase> {};
class InDegrees : public ::testing::TestWithParam<FormulaCase> {};

TEST_P(InRadians, GivesTheTableValue) { EXPECT_DOUBLE_EQ(Solve(GetParam().formula), GetParam().expected); }

TEST_P(InDegrees, GivesTheTableValue) {
    EXPECT_DOUBLE_EQ(Solve(GetParam().formula, {}, true), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Functions, InRadians, ::testing::Values(
    FormulaCase{"abs(-2.5)", 2.5},
    FormulaCase{"atn(0.5)", 0.4636476090008061},
    FormulaCase{"arctan(0.5)", 0.4636476090008061},
    FormulaCase{"cos(0.5)", 0.8775825618903728},
    FormulaCase{"exp(0.5)", 1.6487212707001282},
    FormulaCase{"fix(-2.5)", -2},
    FormulaCase{"int(-2.5)", -3},
    FormulaCase{"log(0.5)", -0.6931471805599453},
    FormulaCase{"sgn(-0.5)", -1},
    FormulaCase{"sgn(0)", 0},
    FormulaCase{"sin(0.5)", 0.479425538604203},
    FormulaCase{"sqr(0.5)", 0.7071067811865476},
    FormulaCase{"tan(0.5)", 0.5463024898437905},
    FormulaCase{"min(2,-3)", -3},
    FormulaCase{"max(2,-3)", 2},
    FormulaCase{"mod(-7,3)", -1},
    FormulaCase{"mod(7.5,2.5)", 0},      // 8 mod 2 after rounding halves to even
    FormulaCase{"logn(8,2)", 3},
    FormulaCase{"sec(0.5)", 1.139493927324549},
    FormulaCase{"cosec(0.5)", 2.085829642933488},
    FormulaCase{"cotan(0.5)", 1.830487721712452},
    FormulaCase{"arcsin(0.5)", 0.5235987755982989},
    FormulaCase{"arccos(0.5)", 1.0471975511965976},
    FormulaCase{"arcsec(-2)", -3.9986646014399243},
    FormulaCase{"arccosec(-2)", -3.9986646014399243},
    FormulaCase{"arccotan(0.5)", 2.0344439357957027},
    FormulaCase{"sinh(0.5)", 0.5210953054937474},
    FormulaCase{"cosh(0.5)", 0.4621171572600098},
    FormulaCase{"cosh(0)", 0},
    FormulaCase{"tanh(0.5)", 0.4621171572600098},
    FormulaCase{"sech(0.5)", 0.886818883970074},
    FormulaCase{"cosech(0.5)", 1.9190347513349437},
    FormulaCase{"cotanh(0.5)", 2.1639534137386525},
    FormulaCase{"arcsinh(0.5)", 0.48121182505960347},
    FormulaCase{"arccosh(2)", 1.3169578969248166},
    FormulaCase{"arctanh(0.5)", 0.5493061443340549},
    FormulaCase{"arcsech(0.5)", 1.3169578969248166},
    FormulaCase{"arccosech(-2)", -0.48121182505960336},
    FormulaCase{"arccotanh(2)", 0.5493061443340549},
    FormulaCase{"log10(0.5)", -0.30102999566398114},
    FormulaCase{"log2(0.5)", -1},
    FormulaCase{"ln(0.5)", -0.6931471805599453},
    FormulaCase{"deg(0.5)", 28.64788975654119},
    FormulaCase{"rad(0.5)", 0.008726646259971639}));

// Trigonometric functions convert with the factors 0.017453292519943278 and
// 57.29577951308238; hyperbolic functions, logarithms, deg and rad ignore the switch.
INSTANTIATE_TEST_SUITE_P(Functions, InDegrees, ::testing::Values(
    FormulaCase{"atn(1)", 45.00000000000004},
    FormulaCase{"arctan(1)", 45.00000000000004},
    FormulaCase{"cos(60)", 0.5000000000000009},
    FormulaCase{"sin(30)", 0.49999999999999956},
    FormulaCase{"tan(45)", 0.9999999999999983},
    FormulaCase{"sec(60)", 1.9999999999999964},
    FormulaCase{"cosec(30)", 2.0000000000000018},
    FormulaCase{"cotan(45)", 1.0000000000000018},
    FormulaCase{"arcsin(0.5)", 30.000000000000036},
    FormulaCase{"arccos(0.5)", 60.00000000000006},
    FormulaCase{"arcsec(2)", 49.10660535086915},
    FormulaCase{"arccosec(2)", 49.10660535086915},
    FormulaCase{"arccotan(1)", 90.99989847941448},
    FormulaCase{"sinh(0.5)", 0.5210953054937474},
    FormulaCase{"deg(0.5)", 28.64788975654119},
    FormulaCase{"rad(0.5)", 0.008726646259971639}));

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
