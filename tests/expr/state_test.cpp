#include <gtest/gtest.h>

#include <functional>

#include "env/errors.h"
#include "expr/equation.h"

namespace quillet::testing {
namespace {

int ErrorOf(const std::function<void()>& f) {
    try {
        f();
    } catch (const RuntimeError& e) {
        return e.number();
    }
    return 0;
}

TEST(Variables, NamesAreTrimmedOnSetOnlyAndKeepTheirCase) {
    clsEquation eq;
    eq.Var(" X ", 2);
    eq.Equation("X*10");  // lower-cased: the variable X is not x
    EXPECT_EQ(ErrorOf([&] { eq.Solution(); }), 1102);
    eq.Var(" x ", 2);
    EXPECT_EQ(eq.Solution(), 20);
    EXPECT_EQ(eq.Var("x"), 2);
    EXPECT_EQ(ErrorOf([&] { (void)eq.Var(" x "); }), 1102);
    eq.VarRemove(" x ");  // not the stored name: nothing is removed
    eq.Solve();
    EXPECT_EQ(eq.Solution(), 20);
}

TEST(Variables, SetReplacesAndRemoveAndClearForget) {
    clsEquation eq;
    eq.Equation("a+b");
    eq.Var("a", 1);
    eq.Var("b", 2);
    eq.Var("a ", 5);
    EXPECT_EQ(eq.Solution(), 7);
    eq.VarRemove("b");
    EXPECT_EQ(ErrorOf([&] { eq.Solution(); }), 1102);
    eq.VarRemove("b");  // a missing name is no error
    eq.Var("b", 2);
    eq.VarClear();
    EXPECT_EQ(ErrorOf([&] { eq.Solution(); }), 1102);
}

TEST(Solution, EvaluatesOncePerChange) {
    clsEquation eq;
    eq.Equation("rnd");
    double first = eq.Solution();
    EXPECT_EQ(eq.Solution(), first);
    eq.Degrees(false);  // unchanged: no new evaluation
    EXPECT_EQ(eq.Solution(), first);
    eq.Degrees(true);
    double second = eq.Solution();
    EXPECT_NE(second, first);
    eq.Var("unused", 1);
    double third = eq.Solution();
    EXPECT_NE(third, second);
    eq.VarRemove("missing");
    double fourth = eq.Solution();
    EXPECT_NE(fourth, third);
    eq.Solve();
    EXPECT_NE(eq.Solution(), fourth);
}

TEST(Solution, AFailureIsTriedAgainUntilFixed) {
    clsEquation eq;
    eq.Equation("(1");
    EXPECT_EQ(ErrorOf([&] { eq.Solution(); }), 1100);
    EXPECT_EQ(ErrorOf([&] { eq.Solution(); }), 1100);  // parsed again, not cached
    eq.Equation("q*2");
    EXPECT_EQ(ErrorOf([&] { eq.Solve(); }), 1102);
    EXPECT_EQ(ErrorOf([&] { eq.Solution(); }), 1102);  // still stale: evaluated again
    eq.Var("q", 4);
    EXPECT_EQ(eq.Solution(), 8);
}

TEST(Equation, StoredLowerCasedAndModRewrittenByTheParse) {
    clsEquation eq;
    eq.Equation("7 MOD 3 + X");
    EXPECT_EQ(eq.Equation(), "7 mod 3 + x");
    eq.Var("x", 10);
    EXPECT_EQ(eq.Solution(), 11);
    EXPECT_EQ(eq.Equation(), "7%3 + x");
}

}  // namespace
}  // namespace quillet::testing
