#include "solver/solver_tab.h"

#include <gtest/gtest.h>

#include "model/form_events.h"
#include "support/form_fixture.h"

namespace quillet {
namespace {

using SolverTab = testing::FormFixture;

std::string Values(FormModel& f) {
    std::string out;
    for (int i = 1; i <= 6; ++i) out += "[" + SolverBox(f, i).text + "]";
    return out;
}

// The third caption tells the families apart; the response-file goldens hold the labels of the others.
TEST_F(SolverTab, ModelChoosesTheFamilyOfQuestions) {
    struct Case {
        const char* model;
        const char* third;
        const char* tips;  // of boxes 3 to 5
        bool sixth;
    } cases[] = {
        {"Power", "1.E-7           3. »  DELTA: Convergent tolerance for unknowns.", "Delta PreDamp Damp", false},
        {"Sine", " 2000           3. »  EvalMax: Max. # of model evaluations.", "EvalMax Zero Accuracy", true},
        {"Bell Curve", " 2000           3. »  EvalMax: Max. # of model evaluations.", "EvalMax Zero Accuracy", false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.model);
        SetMethodsText(s, c.model);
        EXPECT_EQ(s.form.SolvQuestion[3].caption, c.third);
        EXPECT_EQ(s.form.Delta.toolTip + " " + s.form.PreDamp.toolTip + " " + s.form.Damp.toolTip, c.tips);
        EXPECT_EQ(s.form.Rho.visible, c.sixth);
        EXPECT_EQ(s.form.SolvQuestion[6].visible, c.sixth);
    }
}

TEST_F(SolverTab, EditDefaultsFillsTheFamilyOfTheListPositionAndEnables) {
    cmdDefaultSolverData_Click(s);
    s.DataChanged = false;
    cmdEditSolverData_Click(s);  // "-Select-": family A
    EXPECT_EQ(Values(s.form), "[20][0][1.E-7][1][.2][.02]");
    EXPECT_TRUE(s.form.Remax.enabled && s.form.Rho.enabled);
    EXPECT_TRUE(s.DataChanged);

    SetMethodsText(s, "Bell Curve");  // switching families keeps the values until asked
    EXPECT_EQ(Values(s.form), "[20][0][1.E-7][1][.2][.02]");
    cmdEditSolverData_Click(s);
    EXPECT_EQ(Values(s.form), "[20][0][2000][1.e-6][.001][.02]");
}

}  // namespace
}  // namespace quillet
