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

TEST(Variables, ASlotStaysUsableAfterItsNameIsRemoved) {
    clsEquation eq;
    const expr::VarSlot x = eq.Slot(" x ");
    eq.Equation("1/x");
    eq.VarRemove("x");
    EXPECT_EQ(ErrorOf([&] { eq.Solution(); }), 1102);
    eq.Var(x, 8);
    EXPECT_EQ(eq.Solution(), 0.125);
}

TEST(Solution, EvaluatesOncePerChange) {
    clsEquation eq;
    eq.Equation("rnd");
    auto evaluatedAgainAfter = [&](const std::function<void()>& change) {
        const double before = eq.Solution();
        change();
        return eq.Solution() != before;
    };
    EXPECT_FALSE(evaluatedAgainAfter([] {}));
    EXPECT_FALSE(evaluatedAgainAfter([&] { eq.Degrees(false); }));  // unchanged
    EXPECT_TRUE(evaluatedAgainAfter([&] { eq.Degrees(true); }));
    EXPECT_TRUE(evaluatedAgainAfter([&] { eq.Var("unused", 1); }));
    EXPECT_TRUE(evaluatedAgainAfter([&] { eq.VarRemove("missing"); }));  // a missing name is no error
    EXPECT_TRUE(evaluatedAgainAfter([&] { eq.Solve(); }));
}

TEST(Solution, AFailureIsTriedAgainUntilFixed) {
    clsEquation eq;
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
