// New from Data File: where the points of a data file begin and end, the name of the response
// file made beside it, and the command on the form.
#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "fitting/fit_error.h"
#include "fitting/new_from_data.h"
#include "model/catalogue.h"
#include "model/form_events.h"
#include "support/form_fixture.h"

namespace quillet::fitting {
namespace {

using testing::ReadBytes;
using testing::TempDir;
using testing::WriteBytes;

TEST(FindDataLines, SkipsHeaderLinesAndCountsThePointsUpToTheFirstLineThatIsNotOne) {
    struct Case {
        const char* bytes;
        int first, count;
    } cases[] = {
        {"time volts\r\n(two peaks)\r\n1 2\r\n2 3\r\n3 4\r\n", 3, 3},
        {"1,2\n2,3", 1, 2},                                       // no header, no final line end
        {"x\ty\n\n0\t1e-3\n.5\t-2\n\n\n", 3, 2},                  // blank lines around the points
        {"# a b\n1 2\n2 3\nend of data\n4 5\n", 2, 2},           // a footer ends the points
        {"x y z\n1 2 3\n4 5\n", 3, 1},                            // three columns are no point
    };
    TempDir dir;
    for (const auto& c : cases) {
        WriteBytes(dir / "d.txt", c.bytes);
        const DataLines lines = FindDataLines(dir / "d.txt");
        EXPECT_EQ(lines.first, c.first) << c.bytes;
        EXPECT_EQ(lines.count, c.count) << c.bytes;
    }
}

TEST(FindDataLines, AFileWithoutPointsOrMissingIsNamedInTheError) {
    TempDir dir;
    WriteBytes(dir / "words.txt", "no numbers here\r\n1 2 3\r\n");
    for (const std::string& path : {dir / "words.txt", dir / "missing.txt"}) {
        try {
            FindDataLines(path);
            ADD_FAILURE() << path;
        } catch (const FitInputError& e) {
            EXPECT_NE(std::string(e.what()).find("\"" + path + "\""), std::string::npos) << e.what();
        }
    }
}

TEST(ResponseNameFor, ReplacesWhatTheCommandLineWouldSplitAndNumbersTakenNames) {
    const std::set<std::string> taken = {"peaks.Fit", "peaks-2.Fit"};
    auto isTaken = [&](const std::string& n) { return taken.count(n) > 0; };
    const std::pair<const char*, const char*> cases[] = {
        {"two peaks.txt", "two_peaks.Fit"},
        {"a&b(c);d.dat", "a_b_c__d.Fit"},
        {"run.1.data", "run.1.Fit"},
        {"noext", "noext.Fit"},
        {"caf\xC3\xA9 x.csv", "caf__x.Fit"},  // one "_" per character, not per byte
        {"peaks.dat", "peaks-3.Fit"},
        {"~s+t-u_v.txt", "~s+t-u_v.Fit"},
    };
    for (const auto& [data, expected] : cases) EXPECT_EQ(ResponseNameFor(data, isTaken), expected) << data;
}

class NewFromData : public testing::FormFixture {
protected:
    NewFromData() {
        std::filesystem::create_directories(dir / "elsewhere");
        WriteBytes(dir / "elsewhere/two peaks.dat", "time signal\r\nseconds volts\r\n0 20\r\n50 7\r\n100 -3\r\n\r\n");
    }
};

TEST_F(NewFromData, AnswersFromTheDataKeepTheModelAndAreSavedBesideTheData) {
    SetMethodsText(s, "Bell Curve");
    SetText(s, s.form.nTerms, "4");
    SetText(s, s.form.Amplitude, "9 9");
    s.CurrentFile = kNewData;
    dialogs.Choose(dir / "elsewhere/two peaks.dat");
    NewFromDataFile(s);

    EXPECT_EQ(s.CurrentFile, "two_peaks.Fit");
    EXPECT_EQ(s.UserDir, dir / "elsewhere");
    EXPECT_EQ(s.DataDir, s.UserDir);
    EXPECT_FALSE(s.DataChanged);
    EXPECT_EQ(s.form.caption, "two_peaks.Fit ... Quillet, a Calculus-level program");
    const std::pair<int, const char*> answers[] = {{1, "two peaks.dat"}, {3, "3"}, {4, "3"}, {5, ""},
                                                   {6, "100"},           {7, "10"}, {9, ""}};
    for (const auto& [q, text] : answers) EXPECT_EQ(AnswerBox(s.form, q)->text, text) << "question " << q;
    EXPECT_EQ(s.form.Methods.text, "Bell Curve");
    // Saved at once: the browse button's "same directory" rule holds from here on.
    const std::string saved = ReadBytes(dir / "elsewhere/two_peaks.Fit");
    EXPECT_NE(saved.find("two peaks.dat  \t\t! 1."), std::string::npos) << saved;
    EXPECT_NE(saved.find("Bell Curve  \t\t! 2."), std::string::npos) << saved;
}

TEST_F(NewFromData, ChangedAnswersAreOfferedForSavingFirstAndAFileWithoutPointsChangesNothing) {
    s.CurrentFile = "mine.Fit";
    s.UserDir = dir.path();
    SetText(s, s.form.nTerms, "2");
    dialogs.Answer(mb::Cancel);
    NewFromDataFile(s);
    EXPECT_EQ(dialogs.boxes.at(0).text, "Save current data?");
    EXPECT_TRUE(dialogs.fileDialogs.empty());

    s.DataChanged = false;
    WriteBytes(dir / "words.txt", "nothing to fit\r\n");
    dialogs.Choose(dir / "words.txt").Answer(mb::OK);
    NewFromDataFile(s);
    EXPECT_EQ(dialogs.boxes.at(1).text,
              "No response file was made: No line of the data file \"" + dir / "words.txt" +
                  "\" holds one X and one Y value.");
    EXPECT_EQ(s.CurrentFile, "mine.Fit");
    EXPECT_EQ(s.form.nTerms.text, "2");
    EXPECT_FALSE(std::filesystem::exists(dir / "words.Fit"));
}

}  // namespace
}  // namespace quillet::fitting
