// File > Recent Files and files dropped on the window: both open through the Open command's
// own routine, so changed answers are offered for saving first.
#include <gtest/gtest.h>

#include <filesystem>
#include <vector>

#include "env/settings.h"
#include "model/file_commands.h"
#include "model/form_events.h"
#include "support/form_fixture.h"
#include "support/test_registry.h"

namespace quillet {
namespace {

using testing::ShownBox;

class RecentAndDropped : public testing::SavedFormFixture {
protected:
    // Saves the form with `terms` terms as `name` through Save As.
    std::string SaveAs(const std::string& name, const std::string& terms = "1") {
        SetText(s, s.form.nTerms, terms);
        dialogs.Choose(dir / name);
        EXPECT_TRUE(FileSaveAs(s));
        return dir / name;
    }

};

TEST_F(RecentAndDropped, RecentFilesKeepTheLastEightNewestFirstDropMissingOnesAndSurviveARestart) {
    std::vector<std::string> saved;
    for (int i = 1; i <= 10; ++i) saved.push_back(SaveAs("f" + std::to_string(i) + ".Fit"));
    EXPECT_EQ(GetRecentFiles(s.env), (std::vector<std::string>{saved[9], saved[8], saved[7], saved[6], saved[5],
                                                                saved[4], saved[3], saved[2]}));

    // Opening one moves it to the top; a file that is gone no longer shows.
    OpenResponseFile(s, saved[4]);
    std::filesystem::remove(saved[8]);
    const std::vector<std::string> expected = {saved[4], saved[9], saved[7], saved[6],
                                               saved[5], saved[3], saved[2]};
    EXPECT_EQ(GetRecentFiles(s.env), expected);

    // The next start of the program reads the same list.
    s = AppState{};
    s.env.registry = &hive;
    s.env.dialogs = &dialogs;
    EXPECT_EQ(GetRecentFiles(s.env), expected);
}

TEST_F(RecentAndDropped, ARecentFileOpensAfterTheSaveQuestion) {
    const std::string first = SaveAs("first.Fit", "2");
    SaveAs("second.Fit", "3");
    SetText(s, s.form.nTerms, "9");

    dialogs.Answer(mb::Cancel);
    OpenResponseFile(s, first);
    EXPECT_EQ(dialogs.boxes.at(0), (ShownBox{"Save current data?", "Data in form has changed!", 35}));
    EXPECT_EQ(s.CurrentFile, "second.Fit");
    EXPECT_EQ(s.form.nTerms.text, "9");

    dialogs.Answer(mb::No);
    OpenResponseFile(s, first);
    EXPECT_EQ(s.CurrentFile, "first.Fit");
    EXPECT_EQ(s.form.nTerms.text, "2");
    EXPECT_FALSE(s.DataChanged);
}

TEST_F(RecentAndDropped, ADroppedResponseFileOpensAndAnyOtherFileOpensNothingAndSaysSo) {
    SaveAs("Dropped.FIT", "4");
    SaveAs("other.Fit", "5");
    testing::WriteBytes(dir / "pts.100", "1 2\n");

    dialogs.Answer(mb::OK);
    DropFile(s, dir / "pts.100");
    EXPECT_EQ(dialogs.boxes.at(0),
              (ShownBox{"'pts.100' is not a response file (*.Fit).  Quillet opens only response files dropped on its "
                        "window.",
                        "Quillet", mb::Exclamation}));
    EXPECT_EQ(s.CurrentFile, "other.Fit");

    DropFile(s, dir / "Dropped.FIT");
    EXPECT_EQ(s.CurrentFile, "Dropped.FIT");
    EXPECT_EQ(s.form.nTerms.text, "4");
    EXPECT_EQ(GetRecentFiles(s.env).front(), dir / "Dropped.FIT");
}

}  // namespace
}  // namespace quillet
