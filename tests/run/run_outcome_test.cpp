// What a run came to, read from its report: the verdict and its reason, the flags, the
// parameter table in short numbers, and the message after a run that failed or did not converge.
#include "run/run_outcome.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "run/launcher.h"
#include "run/run_fixture.h"

namespace quillet {
namespace {

namespace fs = std::filesystem;
using testing::RunFixture;
using testing::TempDir;
using testing::WriteBytes;

const char* const kConverged =
    "Quillet default solver (separable least squares: Levenberg-Marquardt over the shape parameters)\r\n"
    "Response file: /home/p/peaks/two_peaks.Fit\r\n"
    "Run folder:    /home/p/peaks\r\n"
    "\r\n"
    "Result: converged\r\n"
    "Flagged: a parameter ended on its bound: B(1)\r\n"
    "  why it stopped                      the step changed the shapes by less than DELTA\r\n"
    "  iterations                          7\r\n"
    "\r\n"
    "Parameters\r\n"
    "  name                      start               fitted           std. error             physical       "
    "physical error\r\n"
    "  Y0                          0.1         0.1023456789012       0.0012345678         10.23456789012        0.1234\r\n"
    "  A(1)                          1        -1.98765432101e-05                -         -0.0019876543                 -\r\n"
    "  No standard errors: the parameters are not independent at the solution.\r\n"
    "\r\n"
    "  residual sum of squares             1.234567891\r\n";

TEST(RunReport, TellsTheVerdictItsReasonTheFlagsAndTheParametersInShortNumbers) {
    struct Case {
        std::string text;
        RunOutcome::Kind kind;
        const char* line;
    } cases[] = {
        {kConverged, RunOutcome::Kind::Converged, "The fit converged."},
        {"Result: did NOT converge\r\n  why it stopped                      REMAX iterations (20) reached\r\n",
         RunOutcome::Kind::NotConverged, "The fit did not converge: REMAX iterations (20) reached."},
        {"Result: FAILED: the fit diverged\r\n  why it stopped                      the damping passed 1e16\r\n",
         RunOutcome::Kind::Failed, "The run failed: the fit diverged (the damping passed 1e16)."},
        {"Response file: x\r\n\r\nThe fit was not started: Line 1 of the data file \"d\" holds \"t\", which is not a "
         "number.\r\n",
         RunOutcome::Kind::Failed, "The run failed: Line 1 of the data file \"d\" holds \"t\", which is not a number."},
        {"report of ExDemo.Fit\r\n", RunOutcome::Kind::Unknown, ""},
    };
    for (const auto& c : cases) {
        const RunOutcome o = ParseRunReport(c.text);
        EXPECT_EQ(o.kind, c.kind) << c.text;
        EXPECT_EQ(OutcomeLine(o), c.line) << c.text;
    }
    const RunOutcome o = ParseRunReport(kConverged);
    EXPECT_EQ(o.responsePath, "/home/p/peaks/two_peaks.Fit");
    EXPECT_EQ(o.flags, std::vector<std::string>{"a parameter ended on its bound: B(1)"});
    ASSERT_EQ(o.parameters.size(), 2u);
    EXPECT_EQ(o.parameters[0].name, "Y0");
    EXPECT_EQ(o.parameters[0].fitted, "0.1023457");
    EXPECT_EQ(o.parameters[0].stdError, "0.001234568");
    EXPECT_EQ(o.parameters[0].physical, "10.23457");
    EXPECT_EQ(o.parameters[1].fitted, "-1.987654e-05");
    EXPECT_EQ(o.parameters[1].stdError, "-");
}

TEST(RunReport, AReportLeftByAnEarlierRunDoesNotCount) {
    TempDir dir;
    WriteBytes(dir / "r.out", "Result: converged\r\n");
    const auto later = fs::last_write_time(dir / "r.out") + std::chrono::seconds(5);
    EXPECT_EQ(ReadRunOutcome(dir / "r.out", 0).kind, RunOutcome::Kind::Converged);
    EXPECT_EQ(ReadRunOutcome(dir / "r.out", 0, later).kind, RunOutcome::Kind::Unknown);
    EXPECT_EQ(OutcomeLine(ReadRunOutcome(dir / "r.out", 2, later)),
              "The run failed: the solver left no report (exit status 2).");
    EXPECT_EQ(OutcomeLine(ReadRunOutcome(dir / "none.out", -1)),
              "The run failed: the run was stopped or could not start, and left no report.");
}

class AfterRun : public RunFixture {
protected:
    // The run script copies `report` into the run's output folder.
    void ScriptLeaves(const std::string& report) {
        WriteBytes(ProgramDir() + "/report.txt", report);
#ifdef _WIN32
        WriteBytes(ProgramDir() + "\\run-FitW.bat", "@copy \"%~dp0report.txt\" output\\~Quillet.out >nul\r\n");
#else
        WriteBytes(ProgramDir() + "/run-FitW.sh", "cp \"$(dirname \"$0\")/report.txt\" output/~Quillet.out\n");
#endif
    }
};

TEST_F(AfterRun, ARunThatDidNotConvergeIsToldWithTheReportsReasonAndAConvergedOneIsNot) {
    SaveResponse("b.Fit");
    ScriptLeaves("Result: did NOT converge\r\n  why it stopped                      EvalMax reached\r\n");
    s.form.AutoExit.value = true;
    dialogs.Answer(mb::OK);
    FileRun2(s);
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(dialogs.boxes[0].text, "The fit did not converge: EvalMax reached.\r\n\r\nThe report is " +
                                         testing::NativePath(UserDir() + "/output/~Quillet.out") +
                                         " (View > Last Output).");
    EXPECT_EQ(dialogs.boxes[0].title, "Quillet run");
    EXPECT_EQ(s.RunsEnded, 1);

    ScriptLeaves("Result: converged\r\n");
    FileRun2(s);
    EXPECT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(s.RunsEnded, 2);
}

}  // namespace
}  // namespace quillet
