#include "expr/equation.h"

#include <gtest/gtest.h>

#include <functional>
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
