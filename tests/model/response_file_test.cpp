#include "model/response_file.h"

#include <gtest/gtest.h>

#include <array>
#include <ctime>
#include <filesystem>
#include <tuple>
#include <vector>

#include "env/ports.h"
#include "model/form_events.h"
#include "support/form_fixture.h"

namespace quillet {
namespace {

using testing::FormFixture;
using testing::ReadBytes;
using testing::ShownBox;

class ResponseFileTest : public FormFixture {
protected:
    std::string ReadValues(const std::string& bytes, int count) {
        PutFile("v.txt", bytes);
        LineReader in = LineReader::Open(dir / "v.txt");
        std::string out;
        for (int i = 0; i < count; ++i) out += "[" + ReadValueLine(in) + "]";
        return out;
    }

    void FillForm(const std::string& model) {
        const char* answers[] = {"",  "data.100", "", "1", "100", "3", "1", "2.5", "0",
                                 "1  1  1", "5  5  5", "-1  0  1", "2  2  2"};
        for (int q = 1; q <= 12; ++q)
            if (q != 2) SetText(s, *AnswerBox(s.form, q), answers[q]);
        SetMethodsText(s, model);
        s.form.chkWeight.value = true;
        SetText(s, s.form.Note1, "first note");
        SetText(s, s.form.Note2, "");
    }

    void FillSolverBoxes() {
        const char* values[] = {"", "20", "0", "1.E-7", "1", ".2", ".02"};
        for (int i = 1; i <= 6; ++i) SetText(s, SolverBox(s.form, i), values[i]);
    }

    // Reads `name` into a fresh record that keeps the question labels; question 10 holds "kept".
    void ReadBack(const std::string& name) {
        ResponseRecord fresh;
        fresh.QuestionLabels = s.rec.QuestionLabels;
        fresh.Answers[10] = "kept";
        s.rec = fresh;
        ReadInto(dir.path(), name);
    }
};

TEST_F(ResponseFileTest, ReadValueLineTakesTheValueBeforeTheComment) {
    EXPECT_EQ(ReadValues("12  \t\t! label\r\n-999  \t\t! empty\r\n-9995\r\na!b!c\r\n  x\ty  \t\t! tabs go\r\n"
                         "no comment at all  \r\n\r\n",
                         9),
              "[12][][][a][xy][no comment at all][][-EOF-][-EOF-]");
    EXPECT_EQ(ReadValues("1\n2\r\n3", 4), "[1][2][3][-EOF-]");
    EXPECT_EQ(ReadValues("caf\xc3\xa9 ! utf-8\r\ncaf\xe9 ! 1252\r\n", 2), "[café][café]");
}

TEST(FileDate, UsesEnglishMonthsAndATwelveHourClock) {
    std::tm t{};
    t.tm_year = 126;
    t.tm_mday = 5;
    t.tm_min = 7;
    for (auto [month, hour, text] : {std::tuple{8, 0, "September 05, 2026 @ 12:07 AM"},
                                     std::tuple{8, 12, "September 05, 2026 @ 12:07 PM"},
                                     std::tuple{0, 23, "January 05, 2026 @ 11:07 PM"}}) {
        t.tm_mon = month;
        t.tm_hour = hour;
        EXPECT_EQ(FormatFileDate(t), text);
    }
}

TEST_F(ResponseFileTest, LorentzianFileMatchesHandBuiltBytes) {
    FillForm("Lorentzian");
    FillSolverBoxes();
    WriteAnsFile(s, "Run1.Fit", dir.path());
    ASSERT_EQ(s.PathStatus, "Ok");
    // Built by hand from the format's rules, byte for byte.
    EXPECT_EQ(ReadBytes(dir / "Run1.Fit"), ReadBytes(QUILLET_TEST_DATA "/model/Run1.Fit"));
}

TEST_F(ResponseFileTest, SineFileWritesSixSolverLinesAndTheFullFrequencyLabel) {
    FillForm("Sine");
    SetText(s, s.form.Remax, "30");
    SetText(s, s.form.Rho, ".05");
    WriteAnsFile(s, "S.fit.FIT", dir.path());
    EXPECT_EQ(ReadBytes(dir / "S.fit.FIT"), ReadBytes(QUILLET_TEST_DATA "/model/S.fit.FIT"));
}

TEST_F(ResponseFileTest, UnknownModelGetsErrorLinesInPlaceOfTheSeries) {
    FillForm("Gaussian");
    WriteAnsFile(s, "Bad.Fit", dir.path());
    const std::string bytes = ReadBytes(dir / "Bad.Fit");
    const std::string expectedMiddle =
        "1  1  1  \t\t! 9. \xBB  Lorentz amplitude(s) ... A(i) / Ynorm ...starting value?\r\n"
        "5  5  5  \t\t! 10. \xBB  Pulse Width @ 50% Peak amplitude(s) ... PW50(i) / Xnorm ...star\r\n"
        "------  \t\t!\r\n"
        "Error:  \t\t! Model #Gaussian is invalid!!!\r\n"
        "------  \t\t!\r\n"
        "Y  \t\t! 19.";
    EXPECT_NE(bytes.find(expectedMiddle), std::string::npos) << bytes;
}

TEST_F(ResponseFileTest, EveryModelReadsBackTheQuestionsItsFileCarries) {
    // Questions 8 to 12 and the sixth solver value as read back. A question the file lacks is
    // emptied, except that Power leaves question 10 ("kept" before the read) alone.
    struct Case {
        const char* model;
        std::array<const char*, 5> q8to12;
        const char* solver6;
    } cases[] = {
        {"Lorentzian", {"0", "1  1  1", "5  5  5", "-1  0  1", ""}, "-EOF-"},
        {"Modified Lorentzian", {"0", "1  1  1", "5  5  5", "-1  0  1", "2  2  2"}, "-EOF-"},
        {"Exponential", {"0", "1  1  1", "5  5  5", "", ""}, "-EOF-"},
        {"Power", {"0", "1  1  1", "kept", "", ""}, "-EOF-"},
        {"Sine", {"0", "1  1  1", "5  5  5", "-1  0  1", ""}, ".02"},
        {"Sine * Exponential", {"0", "1  1  1", "5  5  5", "-1  0  1", "2  2  2"}, ".02"},
        {"Bell Curve", {"", "1  1  1", "5  5  5", "-1  0  1", ""}, "-EOF-"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.model);
        FillForm(c.model);
        FillSolverBoxes();
        WriteAnsFile(s, "Trip.Fit", dir.path());
        ReadBack("Trip.Fit");

        for (int q = 8; q <= 12; ++q) EXPECT_EQ(s.rec.Answers[q], c.q8to12[q - 8]) << "question " << q;
        const std::vector<std::string> solver(s.rec.SolverValues.begin() + 1, s.rec.SolverValues.begin() + 7);
        EXPECT_EQ(solver, (std::vector<std::string>{"20", "0", "1.E-7", "1", ".2", c.solver6}));
    }
}

TEST_F(ResponseFileTest, AHandWrittenFileRelabelsTheFormAndReadsOnlyAnUpperCaseSolverAnswer) {
    PutFile("hand.Fit",
            "C:\\runs\\Hand  \t\t!* header\r\n"
            "D:\\data\\pts.dat\r\nExponential\r\n1\r\n10\r\n1\r\n1\r\n1\r\n0\r\n"
            "2\r\n3\r\n"
            "y ! weight in lower case counts\r\n"
            "n1\r\n-999\r\n"
            "y ! solver answer in lower case does not\r\n"
            "20\r\n");
    ReadInto(dir.path(), "hand.Fit");
    EXPECT_EQ(s.rec.ResponseTitle, "Hand");
    EXPECT_EQ(s.rec.ResponseFolder, "C:\\runs");
    EXPECT_EQ(s.rec.Answers[1], "pts.dat");
    EXPECT_FALSE(s.form.PeakLocations.visible);  // the form shows the questions of the model read
    EXPECT_FALSE(s.DataChanged);
    EXPECT_EQ(s.rec.WeightFlag, 1);
    EXPECT_EQ(s.rec.SolverValues[1], "");
}

TEST_F(ResponseFileTest, ANoteThatReadsMinus999IsEmptyWhateverTabsSurroundIt) {
    struct Case {
        const char* line;
        const char* note;
    };
    for (const Case& c : {Case{"\t-999  \t\t! 20. \xBB Note1", ""}, Case{"-999\t\t!", ""}, Case{"\t-999\t", ""},
                          Case{"\t-9990\t\t! 20. \xBB Note1", "-9990"}, Case{"\tfirst\t\t! note", "first"}}) {
        PutFile("n.Fit", std::string("n\r\nd.dat\r\nPower\r\n1\r\n10\r\n1\r\n1\r\n1\r\n0\r\n1\r\nN\r\n") + c.line +
                             "\r\n" + c.line + "\r\nN\r\n");
        ReadInto(dir.path(), "n.Fit");
        EXPECT_EQ(s.rec.Note1, c.note) << c.line;
        EXPECT_EQ(s.rec.Note2, c.note) << c.line;
    }
}

TEST_F(ResponseFileTest, MissingFolderShowsTheCriticalMessage) {
    dialogs.Answer(mb::OK);
    FillForm("Power");
    const std::string folder = dir / "no-such-folder";
    WriteAnsFile(s, "a.Fit", folder);
    EXPECT_EQ(dialogs.boxes, (std::vector<ShownBox>{
                                 {"File Path\\FileName error occured: \r\n"
                                  "    Path = " + folder + "\r\n"
                                  "    FileName = a.Fit\r\n"
                                  "\r\n"
                                  "If these are okay then the error may be do to following:\r\n"
                                  "  Ex*.fit files in Quillet's User directory are for 'read-only'.\r\n"
                                  "  Do not save changes in these Example files.  Save changes under other names.\r\n",
                                  "File not saved; Error in 'WriteAnsFile' routine.", 16}}));
}

TEST_F(ResponseFileTest, ASuccessfulSaveLeavesNoTemporaryFileBehind) {
    FillForm("Exponential");
    WriteAnsFile(s, "a.Fit", dir.path());
    WriteAnsFile(s, "a.Fit", dir.path());
    using std::filesystem::directory_iterator;
    EXPECT_EQ(std::distance(directory_iterator(dir.path()), directory_iterator()), 1);
}

TEST_F(ResponseFileTest, ASaveRemovesTheTemporaryFilesThatKilledSavesOfTheSameFileLeft) {
    // 999999999 is no process: beyond the largest Linux process id, and no multiple of 4 as
    // Windows ids are.
    const std::vector<std::string> stale = {"a.Fit.~tmp999999999", ".a.Fit.~tmp999999999"};
    std::vector<std::string> kept = {"b.Fit.~tmp999999999", "a.Fit.~tmpx", "a.Fit.~tmp", "xa.Fit.~tmp999999999"};
#ifndef _WIN32
    kept.push_back(".a.Fit.~tmp1");  // a save in progress in a process still alive
#endif
    for (const auto& name : stale) PutFile(name, "left by a killed save");
    for (const auto& name : kept) PutFile(name, "not ours");
    FillForm("Exponential");
    WriteAnsFile(s, "a.Fit", dir.path());
    for (const auto& name : stale) EXPECT_FALSE(std::filesystem::exists(dir / name)) << name;
    for (const auto& name : kept) EXPECT_TRUE(std::filesystem::exists(dir / name)) << name;
    EXPECT_TRUE(std::filesystem::exists(dir / "a.Fit"));
}

}  // namespace
}  // namespace quillet
