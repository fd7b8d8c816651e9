#include "expr/equation.h"

#include <gtest/gtest.h>

#include <cfenv>
#include <cmath>
#include <functional>
#include <limits>
#include <vector>
#include <initializer_list>
#include <string>
#include <utility>

#include "env/errors.h"

namespace quillet::testing {
namespace {

// One formula through the public face of the class, as a client evaluates it.
double Solve(const std::string& formula, std::initializer_list<std::pair<const char*, double>> vars = {}) {
    clsEquation eq;
    for (const auto& [name, value] : vars) eq.Var(name, value);
    eq.Equation(formula);
    return eq.Solution();
}

int ErrorOf(const std::function<void()>& f) {
    try {
        f();
    } catch (const RuntimeError& e) {
        return e.number();
    }
    return 0;
}

std::string Nested(int depth) {
    return std::string(depth, '(') + "1" + std::string(depth, ')');
}

// The golden results hold operators, functions and precedence to their bits; these rows are
// the parsing rules its generated formulas do not reach, and the largest values that still fit.
TEST(Formulas, BlanksArgumentsConstantsAndLimitsFollowTheParsingRules) {
    const std::pair<std::string, double> cases[] = {
        {"1 2", 12},                              // blanks are skipped, even inside a number
        {"si n(0)+1", 1},                         // and inside a function's name
        {"x y", 7},                               // so this is the name xy
        {"max(1,2,3)+5", 3},                      // the unused middle argument stays and is taken by "+"
        {"pi", 3.14159265358979},                 // a variable cannot hide a constant
        {Nested(4680), 1},                        // the deepest nesting that fits sixteen bits
        {"0." + std::string(400, '0') + "1", 0},  // too small to represent: zero
        {"2147483647.4\\1", 2147483647},          // the largest long divides without overflow
        {"-2147483648\\1", -2147483648.0},
    };
    for (const auto& [formula, expected] : cases)
        EXPECT_EQ(Solve(formula, {{"x", 3}, {"xy", 7}, {"pi", 3}}), expected) << formula.substr(0, 40);
}

// One row per message and per odd way of reaching it; the golden results cover the common ones.
TEST(Formulas, ErrorsGiveTheirNumberSourceAndDescription) {
    const std::pair<std::string, const char*> cases[] = {
        {"a mod(2)", "1101 clsEquation: Sorry Undefined Function: amod()"},  // no blank behind mod: not rewritten
        {"7mod3", "1102 clsEquation: Undefined Variable: mod3"},
        {"+1", "1103 clsEquation: Invalid Equation"},  // no unary plus
        {"", "1103 clsEquation: Invalid Equation"},
        {"0/0", "6 clsEquation: Overflow"},
        {"mod(7,0.4)", "11 clsEquation: Division by zero"},  // the divisor rounds to 0
        {"sqr(-1)", "5 clsEquation: Invalid procedure call or argument"},
        {"1.5>400", "6 clsEquation: Overflow"},
        {std::string(400, '9'), "6 clsEquation: Overflow"},
        {"2147483647.5\\1", "6 clsEquation: Overflow"},  // rounds to the even 2147483648
        {"-2147483648\\-1", "6 clsEquation: Overflow"},
        {Nested(4681), "6 clsEquation.Parse: Overflow"},
    };
    for (const auto& [formula, expected] : cases) {
        try {
            const double v = Solve(formula);
            ADD_FAILURE() << formula.substr(0, 40) << ": no error, got " << v;
        } catch (const RuntimeError& e) {
            EXPECT_EQ(std::to_string(e.number()) + " " + e.source() + ": " + e.description(), expected)
                << formula.substr(0, 40);
        }
    }
}

// A fault in a step raises there even when later steps would hide it (1/inf is 0, atn(inf)
// is finite, min drops it), and ahead of a different error a later step would raise.
TEST(Faults, RaiseAtTheStepWhereTheyArise) {
    const std::pair<const char*, int> cases[] = {
        {"1/(x*x)", 6},        {"atn(x*x)", 6},          {"min(x*x,1)", 6},    {"x*x-x*x", 6},
        {"1/exp(x/x*1000)", 6}, {"1/(x-x)", 11},         {"0*(0/(x-x))", 6},   {"(0-x)^0.5", 6},
        {"1/(x*x)+log(0-x)", 6}, {"sqr(x*x)", 6},
        // A later call through the table or integer division that raises comes after the fault.
        {"1/(x*x)+arcsin(x)", 6}, {"1/(x*x)+mod(1,0)", 6},
    };
    for (const auto& [formula, number] : cases) {
        EXPECT_EQ(ErrorOf([&] { Solve(formula, {{"x", 1e200}}); }), number) << formula;
        // The same, with the fault flags already set by whatever ran before.
        std::feraiseexcept(FE_OVERFLOW | FE_DIVBYZERO | FE_INVALID);
        EXPECT_EQ(ErrorOf([&] { Solve(formula, {{"x", 1e200}}); }), number) << formula;
    }
    // Flags left set by earlier code do not turn a good solve into an error, nor change its bits.
    std::feraiseexcept(FE_OVERFLOW | FE_DIVBYZERO | FE_INVALID);
    EXPECT_EQ(Solve("x*x+exp(x)", {{"x", 3}}), 9 + std::exp(3.0));
}

TEST(Faults, ANonFiniteVariableRaisesOnlyWhereAStepGivesANonFiniteResult) {
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(Solve("atn(x)", {{"x", inf}}), std::atan(inf));
    EXPECT_EQ(ErrorOf([&] { Solve("x+1", {{"x", inf}}); }), 6);
}

// The array call stops at the X that raised, keeps that X, and goes on from the next one.
TEST(Faults, ASweepStopsAtTheFaultyXAndResumesAfterIt) {
    clsEquation eq;
    const expr::VarSlot x = eq.Slot("x");
    eq.Equation("1/(x*x)");
    const std::vector<double> xs{1, 2, 1e200, 4};
    std::vector<double> ys(xs.size(), -1);
    EXPECT_EQ(ErrorOf([&] { eq.Solutions(x, xs, ys); }), 6);
    EXPECT_EQ(eq.Var("x"), 1e200);
    EXPECT_EQ(ys, (std::vector<double>{1, 0.25, -1, -1}));
    eq.Solutions(x, std::span(xs).subspan(3), std::span(ys).subspan(3));
    EXPECT_EQ(ys[3], 0.0625);
}

// A solve that raised draws no more numbers than the steps before its fault did: here none,
// since the product comes before the name rnd.
TEST(Faults, AFaultDrawsNoExtraRandomNumbers) {
    clsEquation faulty, plain;
    faulty.Equation("rnd+atn(x*x)");
    faulty.Var("x", 1e200);
    EXPECT_EQ(ErrorOf([&] { faulty.Solution(); }), 6);
    faulty.Var("x", 1);
    plain.Equation("rnd");
    EXPECT_EQ(faulty.Solution(), plain.Solution() + std::atan(1.0));
}

// sin and cos of one argument share one call; each must keep the bits it has alone, in both
// angle units, in either order, and beside a third use of the same function.
TEST(Trigonometry, SineAndCosineOfOneArgumentKeepTheBitsEachHasAlone) {
    for (const bool degrees : {false, true}) {
        for (const double x : {0.3, -2.5, 1e6 + 0.1, 1e22, -3e300}) {
            auto solve = [&](const std::string& formula) {
                clsEquation eq;
                eq.Degrees(degrees);
                eq.Var("x", x);
                eq.Equation(formula);
                return eq.Solution();
            };
            const double s = solve("sin(x)"), c = solve("cos(x)");
            EXPECT_EQ(solve("sin(x)*cos(x)"), s * c) << x << (degrees ? " degrees" : "");
            EXPECT_EQ(solve("cos(x)-sin(x)"), c - s) << x << (degrees ? " degrees" : "");
            EXPECT_EQ(solve("sin(x)+sin(x)*cos(x)"), s + s * c) << x << (degrees ? " degrees" : "");
        }
    }
}

// A part written twice, as the solver writes the modified Lorentzian's (2*((x)-c)/w), gives the
// bits of computing it once and using the value twice; a repeated part that raises still does.
TEST(RepeatedParts, GiveTheBitsOfOneEvaluation) {
    for (const bool degrees : {false, true}) {
        for (const double x : {0.25, 1.5, -7.125, 3e5}) {
            auto solve = [&](const std::string& formula, double s = 0) {
                clsEquation eq;
                eq.Degrees(degrees);
                eq.Var("x", x);
                eq.Var("s", s);
                eq.Equation(formula);
                return eq.Solution();
            };
            const double s = solve("2*((x)-1.5)/0.7"), a = solve("atn(x*3)");
            EXPECT_EQ(solve("(3+0.5*(2*((x)-1.5)/0.7))/(1+(2*((x)-1.5)/0.7)^2)"), solve("(3+0.5*s)/(1+s^2)", s)) << x;
            EXPECT_EQ(solve("atn(x*3)-2*atn(x*3)"), a - 2 * a) << x;
        }
    }
    EXPECT_EQ(ErrorOf([] { Solve("1/(x-x)+1/(x-x)", {{"x", 2}}); }), 11);
    EXPECT_EQ(ErrorOf([] { Solve("sqr(0-x)+sqr(0-x)", {{"x", 2}}); }), 5);
}

TEST(Random, SeedRules) {
    EXPECT_EQ(Solve("rnd(-3)"), Solve("rnd(-3)"));  // a negative seed repeats its number
    EXPECT_EQ(Solve("rnd(1)-rnd(0)"), 0);           // 0 repeats the last number
    EXPECT_NE(Solve("rnd(1)-rnd(1)"), 0);           // a positive seed gives the next
}

TEST(Variables, NamesAreTrimmedOnSetOnlyKeepTheirCaseAndCanBeCleared) {
    clsEquation eq;
    eq.Var(" X ", 2);
    eq.Equation("X*10");  // lower-cased: the variable X is not x
    EXPECT_EQ(ErrorOf([&] { eq.Solution(); }), 1102);
    eq.Var("x", 1);
    eq.Var(" x ", 2);  // replaces x
    EXPECT_EQ(eq.Solution(), 20);
    EXPECT_EQ(ErrorOf([&] { (void)eq.Var(" x "); }), 1102);
    eq.VarRemove(" x ");  // not the stored name: nothing is removed
    eq.Solve();
    EXPECT_EQ(eq.Solution(), 20);
    eq.VarClear();
    EXPECT_EQ(ErrorOf([&] { eq.Solution(); }), 1102);
}

TEST(Solution, EvaluatesOncePerChange) {
    clsEquation eq;
    eq.Equation("rnd");
    auto evaluatedAgainAfter = [&](const std::function<void()>& change) {
        const double before = eq.Solution();
        change();
        return eq.Solution() != before;
    };
    EXPECT_FALSE(evaluatedAgainAfter([&] { eq.Degrees(false); }));  // unchanged
    EXPECT_TRUE(evaluatedAgainAfter([&] { eq.Degrees(true); }));
    EXPECT_TRUE(evaluatedAgainAfter([&] { eq.Var("unused", 1); }));
    EXPECT_TRUE(evaluatedAgainAfter([&] { eq.VarRemove("missing"); }));  // a missing name is no error
    EXPECT_TRUE(evaluatedAgainAfter([&] { eq.Solve(); }));
}

TEST(Solution, AFailureIsTriedAgainUntilFixedThroughASlotThatOutlivesItsName) {
    clsEquation eq;
    const expr::VarSlot x = eq.Slot(" x ");
    eq.Equation("1/x");
    eq.VarRemove("x");
    EXPECT_EQ(ErrorOf([&] { eq.Solve(); }), 1102);
    EXPECT_EQ(ErrorOf([&] { eq.Solution(); }), 1102);  // still stale: evaluated again
    eq.Var(x, 8);
    EXPECT_EQ(eq.Solution(), 0.125);
}

}  // namespace
}  // namespace quillet::testing
