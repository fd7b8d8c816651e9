#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <string>

#include "solve.h"

namespace quillet::testing {
namespace {

struct Case {
    const char* formula;
    double expected;
};

void PrintTo(const Case& c, std::ostream* os) { *os << c.formula; }

class InRadians : public ::testing::TestWithParam<Case> {};
class InDegrees : public ::testing::TestWithParam<Case> {};

TEST_P(InRadians, GivesTheTableValue) { EXPECT_DOUBLE_EQ(Solve(GetParam().formula), GetParam().expected); }

TEST_P(InDegrees, GivesTheTableValue) {
    EXPECT_DOUBLE_EQ(Solve(GetParam().formula, {}, true), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Functions, InRadians, ::testing::Values(
    Case{"abs(-2.5)", 2.5},
    Case{"atn(0.5)", 0.4636476090008061},
    Case{"arctan(0.5)", 0.4636476090008061},
    Case{"cos(0.5)", 0.8775825618903728},
    Case{"exp(0.5)", 1.6487212707001282},
    Case{"fix(-2.5)", -2},
    Case{"int(-2.5)", -3},
    Case{"log(0.5)", -0.6931471805599453},
    Case{"sgn(-0.5)", -1},
    Case{"sgn(0)", 0},
    Case{"sin(0.5)", 0.479425538604203},
    Case{"sqr(0.5)", 0.7071067811865476},
    Case{"tan(0.5)", 0.5463024898437905},
    Case{"min(2,-3)", -3},
    Case{"max(2,-3)", 2},
    Case{"mod(-7,3)", -1},
    Case{"mod(7.5,2.5)", 0},      // 8 mod 2 after rounding halves to even
    Case{"logn(8,2)", 3},
    Case{"sec(0.5)", 1.139493927324549},
    Case{"cosec(0.5)", 2.085829642933488},
    Case{"cotan(0.5)", 1.830487721712452},
    Case{"arcsin(0.5)", 0.5235987755982989},
    Case{"arccos(0.5)", 1.0471975511965976},
    Case{"arcsec(-2)", -3.9986646014399243},
    Case{"arccosec(-2)", -3.9986646014399243},
    Case{"arccotan(0.5)", 2.0344439357957027},
    Case{"sinh(0.5)", 0.5210953054937474},
    Case{"cosh(0.5)", 0.4621171572600098},
    Case{"cosh(0)", 0},
    Case{"tanh(0.5)", 0.4621171572600098},
    Case{"sech(0.5)", 0.886818883970074},
    Case{"cosech(0.5)", 1.9190347513349437},
    Case{"cotanh(0.5)", 2.1639534137386525},
    Case{"arcsinh(0.5)", 0.48121182505960347},
    Case{"arccosh(2)", 1.3169578969248166},
    Case{"arctanh(0.5)", 0.5493061443340549},
    Case{"arcsech(0.5)", 1.3169578969248166},
    Case{"arccosech(-2)", -0.48121182505960336},
    Case{"arccotanh(2)", 0.5493061443340549},
    Case{"log10(0.5)", -0.30102999566398114},
    Case{"log2(0.5)", -1},
    Case{"ln(0.5)", -0.6931471805599453},
    Case{"deg(0.5)", 28.64788975654119},
    Case{"rad(0.5)", 0.008726646259971639}));

// Trigonometric functions convert with the factors 0.017453292519943278 and
// 57.29577951308238; hyperbolic functions, logarithms, deg and rad ignore the switch.
INSTANTIATE_TEST_SUITE_P(Functions, InDegrees, ::testing::Values(
    Case{"atn(1)", 45.00000000000004},
    Case{"arctan(1)", 45.00000000000004},
    Case{"cos(60)", 0.5000000000000009},
    Case{"sin(30)", 0.49999999999999956},
    Case{"tan(45)", 0.9999999999999983},
    Case{"sec(60)", 1.9999999999999964},
    Case{"cosec(30)", 2.0000000000000018},
    Case{"cotan(45)", 1.0000000000000018},
    Case{"arcsin(0.5)", 30.000000000000036},
    Case{"arccos(0.5)", 60.00000000000006},
    Case{"arcsec(2)", 49.10660535086915},
    Case{"arccosec(2)", 49.10660535086915},
    Case{"arccotan(1)", 90.99989847941448},
    Case{"sinh(0.5)", 0.5210953054937474},
    Case{"log(0.5)", -0.6931471805599453},
    Case{"deg(0.5)", 28.64788975654119},
    Case{"rad(0.5)", 0.008726646259971639}));

TEST(Constants, HaveTheirFixedPrecision) {
    EXPECT_EQ(Solve("e"), 2.718281828);
    EXPECT_EQ(Solve("pi"), 3.14159265358979);
    EXPECT_EQ(Solve("w"), 6.28318530717958);
    EXPECT_EQ(Solve("deg(1)"), 57.29577951308238);
    EXPECT_EQ(Solve("rad(1)"), 0.017453292519943278);
}

TEST(Constants, AVariableCannotHideAConstant) { EXPECT_EQ(Solve("pi", {{"pi", 3}}), 3.14159265358979); }

TEST(Random, NegativeSeedRepeatsItsNumber) {
    double a = Solve("rnd(-3)");
    EXPECT_EQ(Solve("rnd(-3)"), a);
    EXPECT_NE(Solve("rnd(-4)"), a);
    EXPECT_EQ(Solve("rnd(-3)-rnd(-3)"), 0);
}

TEST(Random, ZeroRepeatsTheLastAndPositiveGivesTheNext) {
    EXPECT_EQ(Solve("rnd(1)-rnd(0)"), 0);
    EXPECT_NE(Solve("rnd(1)-rnd(1)"), 0);
    EXPECT_EQ(Solve("rnd(-2)+rnd(1)"), Solve("rnd(-2)+rnd"));
}

TEST(Random, NumbersAreSinglePrecisionInTheUnitInterval) {
    clsEquation eq;
    eq.Equation("rnd");
    std::set<double> seen;
    for (int i = 0; i < 2000; ++i) {
        eq.Solve();
        double v = eq.Solution();
        ASSERT_GE(v, 0);
        ASSERT_LT(v, 1);
        ASSERT_EQ(static_cast<double>(static_cast<float>(v)), v);
        seen.insert(v);
    }
    EXPECT_GT(seen.size(), 1990u);
}

TEST(Random, RandomAndRandStayInTheirRanges) {
    clsEquation range, whole;
    range.Equation("random(2,3)");
    whole.Equation("rand(10)");
    std::set<double> wholes;
    for (int i = 0; i < 500; ++i) {
        range.Solve();
        whole.Solve();
        ASSERT_GE(range.Solution(), 2);
        ASSERT_LT(range.Solution(), 3);
        double w = whole.Solution();
        ASSERT_EQ(w, std::floor(w));
        wholes.insert(w);
    }
    EXPECT_EQ(wholes, (std::set<double>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

}  // namespace
}  // namespace quillet::testing
