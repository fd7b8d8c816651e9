#include "solver/solver_tab.h"

#include <gtest/gtest.h>

#include "model/form_events.h"
#include "support/form_fixture.h"

namespace quillet {
namespace {

using SolverTab = testing::FormFixture;

const char* kFamilyA[] = {
    "   20             1. »  REMAX: Maximum iterations.",
    "    0              2. »  DETAIL: Detailed report every Nth iteration.",
    "1.E-7           3. »  DELTA: Convergent tolerance for unknowns.",
    "   1               4. »  PREDAMP: Damping factor for 1st iteration;  0 < PREDAMP <= 1.",
    "   .2              5. »  DAMP: Criteria for imposing damping; 0 < DAMP <= 1."};
const char* kFamilyB[] = {
    "   20             1. »  REMAX: Maximum iterations.",
    "    0              2. »  DETAIL: Detailed report every Nth iteration.",
    " 2000           3. »  EvalMax: Max. # of model evaluations.",
    " 1.e-6           4. »  ZERO: Iteration convergence tolerance.",
    "  .001           5. »  ACCURACY: Relative tolerance for constraint satisfaction at convergence."};

std::string Values(FormModel& f) {
    std::string out;
    for (int i = 1; i <= 6; ++i) out += "[" + SolverBox(f, i).text + "]";
    return out;
}

TEST_F(SolverTab, ModelChoosesTheFamilyOfQuestions) {
    struct Case {
        const char* model;
        bool familyB;
        bool sixth;
    } cases[] = {{"-Select-", false, false}, {"Lorentzian", false, false}, {"Modified Lorentzian", false, false},
                 {"Exponential", false, false}, {"Power", false, false},   {"Sine", true, true},
                 {"Sine * Exponential", true, true}, {"Bell Curve", true, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.model);
        SetMethodsText(s, c.model);
        for (int i = 1; i <= 5; ++i)
            EXPECT_EQ(s.form.SolvQuestion[i].caption, (c.familyB ? kFamilyB : kFamilyA)[i - 1]) << i;
        EXPECT_EQ(s.form.Rho.visible, c.sixth);
        EXPECT_EQ(s.form.SolvQuestion[6].visible, c.sixth);
        EXPECT_EQ(s.form.Delta.toolTip, c.familyB ? "EvalMax" : "Delta");
        EXPECT_EQ(s.form.PreDamp.toolTip, c.familyB ? "Zero" : "PreDamp");
        EXPECT_EQ(s.form.Damp.toolTip, c.familyB ? "Accuracy" : "Damp");
    }
    SetMethodsText(s, "Sine");
    EXPECT_EQ(s.form.SolvQuestion[6].caption,
              "   .02            6. »  RHO: Weighting factor for the penalty function during initial iteration.");
}

TEST_F(SolverTab, EditDefaultsFillsTheFamilyOfTheListPositionAndEnables) {
    cmdDefaultSolverData_Click(s);
    EXPECT_EQ(Values(s.form), "[][][][][][]");
    EXPECT_FALSE(s.form.Remax.enabled);
    EXPECT_FALSE(s.form.Rho.enabled);

    s.DataChanged = false;
    cmdEditSolverData_Click(s);  // "-Select-": family A
    EXPECT_EQ(Values(s.form), "[20][0][1.E-7][1][.2][.02]");
    EXPECT_TRUE(s.form.Remax.enabled && s.form.Rho.enabled);
    EXPECT_TRUE(s.DataChanged);

    SetMethodsText(s, "Bell Curve");  // switching families keeps the values until asked
    EXPECT_EQ(Values(s.form), "[20][0][1.E-7][1][.2][.02]");
    cmdEditSolverData_Click(s);
    EXPECT_EQ(Values(s.form), "[20][0][2000][1.e-6][.001][.02]");
    EXPECT_FALSE(s.form.Rho.visible);
}

TEST_F(SolverTab, PuttingAnswersBackEnablesTheBoxesOnlyWhenOneHoldsAValue) {
    for (auto& v : s.rec.SolverValues) v.clear();
    PutAnswers(s);
    EXPECT_FALSE(s.form.Detail.enabled);
    s.rec.SolverValues[6] = ".05";
    PutAnswers(s);
    EXPECT_TRUE(s.form.Detail.enabled);
    EXPECT_EQ(s.form.Rho.text, ".05");
}

}  // namespace
}  // namespace quillet
