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

TEST_F(SolverTab, EditDefaultsFillsTheFamilyOfTheListPositionAndEnables) {
    cmdDefaultSolverData_Click(s);
    s.DataChanged = false;
    cmdEditSolverData_Click(s);  // "-Select-": family A
    EXPECT_EQ(Values(s.form), "[20][0][1.E-7][1][.2][.02]");
    EXPECT_TRUE(s.form.Rho.enabled);
    EXPECT_TRUE(s.DataChanged);

    SetMethodsText(s, "Bell Curve");  // switching families keeps the values until asked
    EXPECT_EQ(Values(s.form), "[20][0][1.E-7][1][.2][.02]");
    cmdEditSolverData_Click(s);
    EXPECT_EQ(Values(s.form), "[20][0][2000][1.e-6][.001][.02]");
}

}  // namespace
}  // namespace quillet
