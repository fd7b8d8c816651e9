#include "model/question_form.h"

#include <gtest/gtest.h>

#include "model/form_events.h"
#include "support/form_fixture.h"

namespace quillet {
namespace {

using testing::FormFixture;
using QuestionForm = FormFixture;

struct Layout {
    const char* model;
    bool q8, q10, q11, q12, combo, solverB;  // solverB: the second family of solver questions
    const char* q9;
    const char* q10caption;
    const char* q11caption;
};

TEST_F(QuestionForm, EachModelShowsAndLabelsItsOwnQuestionsAndSolverQuestions) {
    // The second model of each pair shares its partner's captions (nullptr: not checked again).
    const Layout layouts[] = {
        {"Lorentzian", true, true, true, false, false, false,
         "9. »  Lorentz amplitude(s) ... A(i) / Ynorm ...starting value?",
         "10. »  Pulse Width @ 50% Peak amplitude(s) ... PW50(i) / Xnorm ...starting value(s)?",
         "11. »  Peak locations or offset ... t0(i) / Xnorm ...starting value(s)?"},
        {"Modified Lorentzian", true, true, true, true, false, false, nullptr, nullptr, nullptr},
        {"Exponential", true, true, false, false, false, false,
         "9. »  Exponential amplitude(s) ... A(i) / Ynorm ...starting value(s)?",
         "10. »  Exponential power(s) ... B(i) * Xnorm ...starting value(s)?", nullptr},
        {"Power", true, false, false, false, false, false,
         "9. »  Power amplitude(s)...A(i) / Ynorm * Xnorm^i ...starting value(s)?", nullptr, nullptr},
        {"Sine", true, true, true, false, true, true, "9. »  Sine amplitude(s) ... A(i) / Ynorm ...starting value(s)?",
         "10. »", "11. »  Sine offset (Theta) ... C(i) ...starting value(s)?"},
        {"Sine * Exponential", true, true, true, true, true, true, nullptr, nullptr, nullptr},
        {"Bell Curve", false, true, true, false, false, true,
         "9. »  Bell Curve T0(s) ... T0(i) / Xnorm ...starting value(s)?",
         "10. »  Bell Curve amplitude(s) ... A(i) ...starting value(s)?",
         "11. »  Bell Curve Standard Deviation(s) ... B(i) * Xnorm ...starting value(s)?"},
    };
    for (const auto& l : layouts) {
        SCOPED_TRACE(l.model);
        SetMethodsText(s, l.model);
        const auto& f = s.form;
        // Each label is shown and hidden with its box.
        EXPECT_EQ(f.Y0.visible, l.q8);
        EXPECT_EQ(f.PW50.visible, l.q10);
        EXPECT_EQ(f.PeakLocations.visible, l.q11);
        EXPECT_EQ(f.Amplitude2.visible, l.q12);
        EXPECT_EQ(f.Combo10.visible, l.combo);
        EXPECT_EQ(f.Rho.visible, l.combo);  // only the Sine models ask for RHO
        EXPECT_EQ(f.SolvQuestion[3].caption, l.solverB
                                                 ? " 2000           3. »  EvalMax: Max. # of model evaluations."
                                                 : "1.E-7           3. »  DELTA: Convergent tolerance for unknowns.");
        EXPECT_EQ(f.Damp.toolTip, l.solverB ? "Accuracy" : "Damp");
        const std::pair<const Label*, const char*> captions[] = {
            {&f.Question9, l.q9}, {&f.Question10, l.q10caption}, {&f.Question11, l.q11caption}};
        for (const auto& [label, text] : captions) {
            if (text) {
                EXPECT_EQ(label->caption, text);
            }
        }
        if (l.combo) {
            EXPECT_EQ(f.Combo10.text, "Sine frequencies ... B(i) * Xnorm ...starting value(s)?");
        }
    }
    EXPECT_EQ(s.form.Question12.caption, "12. »  Exponential weight ... D(i) ...starting value(s)?");
}

TEST_F(QuestionForm, EditsSetDataChangedOnlyWhenTheTextDiffersFromTheRecord) {
    GetAnswers(s);  // the record now holds the defaults
    for (int q : {1, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}) {
        SCOPED_TRACE(q);
        s.DataChanged = false;
        TextBox& box = *AnswerBox(s.form, q);
        const std::string stored = box.text;
        SetText(s, box, stored + "x");
        SetText(s, box, stored);  // typing the old value back does not clear the flag
        EXPECT_TRUE(s.DataChanged);
        s.DataChanged = false;
        box.text = "";  // a change to the stored value itself leaves the flag alone
        SetText(s, box, stored);
        EXPECT_FALSE(s.DataChanged);
    }
}

TEST_F(QuestionForm, CompletenessFollowsTheQuestionsTheModelUses) {
    struct Case {
        const char* model;
        int blank;  // the one question left blank, 0 for none
        bool complete;
    } cases[] = {{"-Select-", 0, false},  {"Lorentzian", 12, true},  {"Modified Lorentzian", 12, false},
                 {"Power", 10, true},     {"Exponential", 11, true}, {"Exponential", 10, false},
                 {"Bell Curve", 8, true}, {"Sine", 8, false},        {"Lorentzian", 1, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.model) + " blank " + std::to_string(c.blank));
        SetMethodsText(s, c.model);
        for (int q = 1; q <= 12; ++q)
            if (q != 2) SetText(s, *AnswerBox(s.form, q), q == c.blank ? "  " : "1");
        if (!c.complete) dialogs.Answer(mb::OK);
        EXPECT_EQ(isCompleteTest(s), c.complete);
    }
    EXPECT_EQ(dialogs.boxes.at(0), (testing::ShownBox{"Some fields are Blank, please fill them and submit again",
                                                      "Missing some data fields", 48}));
}

// The widgets' tests take a data file from the response file's folder.
TEST_F(QuestionForm, BrowseButtonRefusesDataFromAnotherFolder) {
    s.UserDir = dir.path();
    const std::string before = s.form.timeData.text;
    dialogs.Choose("/elsewhere/other.100").Answer(mb::OK);
    cmdFileData_Click(s);
    EXPECT_EQ(s.form.timeData.text, before);
    EXPECT_EQ(dialogs.boxes,
              (std::vector<testing::ShownBox>{{"Sorry, Input & Data files -must- be in same directory!",
                                               "Select File Name containing your Data to be curve fitted", 48}}));
    EXPECT_EQ(dialogs.fileDialogs.at(0).filter,
              "All Files (*.*)|*.*|Input Data files (*.??0.data)|*.??0.data|Plot data files (*.plt)|*.plt");

    dialogs.Cancel();  // says nothing
    cmdFileData_Click(s);
}

}  // namespace
}  // namespace quillet
