#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <utility>

#include "env/errors.h"
#include "expr/equation.h"

namespace quillet::testing {
namespace {

// One formula through the public face of the class, as a client evaluates it.
double Solve(const std::string& formula, std::initializer_list<std::pair<const char*, double>> vars = {}) {
    clsEquation eq;
    for (const auto& [name, value] : vars) eq.Var(name, value);
    eq.Equation(formula);
    return eq.Solution();
}

std::string Nested(int depth) { return std::string(depth, '(') + "1" + std::string(depth, ')'); }

// The golden results hold operators, functions and precedence to their bits; these rows are
// the parsing rules its generated formulas do not reach.
TEST(Formulas, BlanksArgumentsAndConstantsFollowTheParsingRules) {
    const std::pair<const char*, double> cases[] = {
        {"1 2", 12},               // blanks are skipped, even inside a number
        {"si n(0)+1", 1},          // and inside a function's name
        {"x y", 7},                // so this is the name xy
        {"max(1,2,3)+5", 3},       // the unused middle argument stays and is taken by "+"
        {"pi", 3.14159265358979},  // a variable cannot hide a constant
    };
    for (const auto& [formula, expected] : cases)
        EXPECT_EQ(Solve(formula, {{"x", 3}, {"xy", 7}, {"pi", 3}}), expected) << formula;
}

TEST(Formulas, TheLargestValuesThatFitStillEvaluate) {
    const std::pair<std::string, double> cases[] = {
        {Nested(4680), 1},                        // the deepest nesting that fits sixteen bits
        {"0." + std::string(400, '0') + "1", 0},  // too small to represent: zero
        {"2147483647.4\\1", 2147483647},          // the largest long divides without overflow
        {"-2147483648\\1", -2147483648.0},
    };
    for (const auto& [formula, expected] : cases) EXPECT_EQ(Solve(formula), expected) << formula.substr(0, 40);
}

// One row per message and per odd way of reaching it; the golden results cover the common ones.
TEST(Formulas, ErrorsGiveTheirNumberSourceAndDescription) {
    const struct {
        std::string formula;
        int number;
        const char* description;
        const char* source = "clsEquation";
    } cases[] = {
        {"1+2)", 1100, "Unbalanced parenthesis"},
        {"a mod(2)", 1101, "Sorry Undefined Function: amod()"},  // no blank behind mod: not rewritten
        {"7mod3", 1102, "Undefined Variable: mod3"},
        {"+1", 1103, "Invalid Equation"},  // no unary plus
        {"", 1103, "Invalid Equation"},
        {"sin(,)", 1104, "Invalid arguments to function: sin()"},
        {"0/0", 6, "Overflow"},
        {"mod(7,0.4)", 11, "Division by zero"},  // the divisor rounds to 0
        {"sqr(-1)", 5, "Invalid procedure call or argument"},
        {"1.5>400", 6, "Overflow"},
        {std::string(400, '9'), 6, "Overflow"},
        {"2147483647.5\\1", 6, "Overflow"},  // rounds to the even 2147483648
        {"-2147483648\\-1", 6, "Overflow"},
        {Nested(4681), 6, "Overflow", "clsEquation.Parse"},
    };
    for (const auto& c : cases) {
        try {
            const double v = Solve(c.formula);
            ADD_FAILURE() << c.formula.substr(0, 40) << ": no error, got " << v;
        } catch (const RuntimeError& e) {
            EXPECT_EQ(e.number(), c.number) << c.formula.substr(0, 40);
            EXPECT_EQ(e.source(), c.source) << c.formula.substr(0, 40);
            EXPECT_EQ(e.description(), c.description) << c.formula.substr(0, 40);
        }
    }
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
