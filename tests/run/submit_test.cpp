#include "run/submit.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "model/file_commands.h"
#include "model/form_events.h"
#include "run/run_fixture.h"

namespace quillet {
namespace {

using testing::NativePath;
using testing::RunFixture;
using testing::ShownBox;
using testing::WriteBytes;

const std::string kTitle = "In 'cmdSubmit' routine ...";

class Submit : public RunFixture {
  protected:
    // Submits, answers the one message box and tells what it showed.
    ShownBox Refused() {
        dialogs.Answer(mb::OK);
        cmdSubmit_Click(s);
        EXPECT_FALSE(ScriptRan());
        return dialogs.boxes.back();
    }
};

TEST_F(Submit, ChecksReportInOrderAndStartNothing) {
    s.CurrentFile = "";  // an unsaved form
    EXPECT_EQ(Refused(),
              (ShownBox{"File -not- saved OR path -not- found.  Please, try menu command "
                        "File | Save As.  This -may- resolve this problem.",
                        kTitle, 48}));
    // Both files exist, in folders that differ only in letter case.
    SaveResponse("run.Fit");
    const std::string other = MakeFolder("USER");
    WriteBytes(other + "/pts.100", "1 2\n");
    SetText(s, s.form.timeData, other + "/pts.100");
    EXPECT_EQ(Refused(),
              (ShownBox{"Sorry, at least one Path is -not- correct.  Please, move both "
                        "files into the same directory.  This should resolve this problem.",
                        kTitle, 48}));
    SetText(s, s.form.timeData, "missing.100");
    EXPECT_EQ(Refused(),
              (ShownBox{"Sorry, one or both files were -not- found.  Please, move both "
                        "files into the same directory.  This should resolve this problem.",
                        kTitle, 48}));
}

TEST_F(Submit, ADataFileThatVanishesBetweenTheChecksIsNamed) {
    SaveResponse("run.Fit");
    int dataLooks = 0;
    s.env.probe = [&](const std::string& path, bool folder) {
        if (path.ends_with("pts.100") && ++dataLooks > 1)
            return false;  // gone after the first check
        return RealPathProbe(path, folder);
    };
    EXPECT_EQ(Refused(),
              (ShownBox{NativePath(UserDir() + "/pts.100") +
                            " file was -not- found.  Please, correct file name and/or its "
                            "path ...  '" +
                            UserDir() + "' is the path where your input file is located.",
                        kTitle, 48}));
}

TEST_F(Submit, DataFileInAFolderWithABlankFailsTheShortNameRule) {
    UseUserDir(MakeFolder("My Runs"));
    SaveResponse("run.Fit");
    EXPECT_EQ(Refused(), (ShownBox{"pts.100 file name must be a valid DOS file name; ie. 8.3 "
                                   "alpha-numeric characters ... eg. ~234-678.abc .",
                                   kTitle, 48}));
}

TEST_F(Submit, BlankAnswersAreRefusedBeforeAnythingRuns) {
    SetText(s, s.form.xnorm, "");
    SaveResponse("run.Fit");
    EXPECT_EQ(Refused().title, "Missing some data fields");
}

TEST_F(Submit, ShortSeriesAreWarnedPaddedAndTheRunStillStarts) {
    SetText(s, s.form.nTerms, "4");
    SetText(s, s.form.PW50, "5\t 5");
    SaveResponse("run.Fit");
    // One frame per short line, the summary, then the save prompt for the padded answers.
    dialogs.Answer(mb::OK).Answer(mb::OK).Answer(mb::OK).Answer(mb::OK).Answer(mb::OK);
    dialogs.Choose(UserDir() + "/run.Fit").Answer(mb::Yes);
    cmdSubmit_Click(s);
    ASSERT_GE(dialogs.boxes.size(), 4u);
    EXPECT_EQ(dialogs.boxes[0],
              (ShownBox{" ============== Warning! ============== \r\n"
                        " =        'Line 9' variable must contain 4 values          = \r\n"
                        " =          or more for your 'A' parameter.             = \r\n"
                        " =================================== \r\n",
                        "In 'cmdSubmit_Click' routine", 16}));
    EXPECT_EQ(dialogs.boxes[3],
              (ShownBox{" ================ Warning ================ Added parameters for "
                        "series.  This will allow the solver to continue and come up with a "
                        "solution.  Re-run with number of terms you desire, if not what you "
                        "want. =======================================",
                        kTitle, 48}));
    EXPECT_EQ(s.form.Amplitude.text, "1  1  1 1");
    EXPECT_EQ(s.form.PW50.text, "5\t 5 1 1");
    EXPECT_TRUE(ScriptRan());
}

}  // namespace
}  // namespace quillet
