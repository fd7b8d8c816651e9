// The widgets mirror the form model both ways: edits reach the library's handlers, and what
// the handlers change shows in the widgets.
#include <QComboBox>
#include <cmath>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

#include "model/form_events.h"
#include "ui/calculator_page.h"
#include "ui_fixture.h"

namespace quillet::testing {
namespace {

class Binding : public UiFixture {
protected:
    void Choose(const QString& modelName) {
        auto* methods = Find<QComboBox>("Methods");
        const int i = methods->findText(modelName);
        ASSERT_GE(i, 0) << modelName.toStdString();
        emit methods->activated(i);
    }
    bool Shown(const char* name) const { return !Find<QWidget>(name)->isHidden(); }
    QString Caption(const char* name) const { return Find<QLabel>(name)->text(); }
};

// The widgets show and label what the form model decides; the library's tests cover every model.
TEST_F(Binding, TypingInEveryAnswerBoxMarksTheAnswersChangedAndTheChosenModelShowsItsQuestions) {
    window->ShowTab(Tab::Solver);  // its page, with the solver's boxes, is built when it first shows
    Choose("Modified Lorentzian");  // the model that asks all twelve questions
    for (const char* name : {"timeData", "Line0", "nPoints", "nTerms", "xnorm", "ynorm", "Y0", "Amplitude", "PW50",
                             "PeakLocations", "Amplitude2", "Note1", "Note2", "Remax", "Rho"}) {
        s.DataChanged = false;
        QTest::keyClicks(Find<QLineEdit>(name), "7");
        EXPECT_TRUE(s.DataChanged) << name;
    }
    EXPECT_EQ(s.form.Note2.text, "Your notes go here7");

    Choose("Sine");
    EXPECT_TRUE(Shown("Combo10"));
    EXPECT_FALSE(Shown("Amplitude2"));
    EXPECT_EQ(Caption("Question10"), QString::fromUtf8("10. »"));
    EXPECT_EQ(Find<QComboBox>("Combo10")->currentText(), "Sine frequencies ... B(i) * Xnorm ...starting value(s)?");
    EXPECT_EQ(Caption("SolvQuestion3"), " 2000           3. »  EvalMax: Max. # of model evaluations.");
    EXPECT_EQ(Find<QLineEdit>("Delta")->toolTip(), "EvalMax");
}

// The tabs behind the first are built when they first show, with what the model holds by then;
// from then on they follow it like the others.
TEST_F(Binding, ATabFirstShownAfterTheModelChangedShowsTheModelAndFollowsIt) {
    window->binder().Call([](AppState& st) {
        SetText(st, SolverBox(st.form, 1), "77");
        st.form.tbXvalue.text = "0.5";
    });
    window->ShowTab(Tab::Solver);
    EXPECT_EQ(Find<QLineEdit>("Remax")->text(), "77");
    window->ShowTab(Tab::Calculator);
    EXPECT_EQ(Find<QLineEdit>("tbXvalue")->text(), "0.5");
    window->binder().Call([](AppState& st) { SetText(st, SolverBox(st.form, 1), "78"); });
    EXPECT_EQ(Find<QLineEdit>("Remax")->text(), "78");
    EXPECT_EQ(window->tabs()->currentIndex(), static_cast<int>(Tab::Calculator));
}

TEST_F(Binding, FocusOnTheDataFileGoesToItsBrowseButtonWhichTakesTheChosenFile) {
    window->activateWindow();
    ASSERT_TRUE(WaitUntil([this] { return window->isActiveWindow(); }));
    Find<QLineEdit>("timeData")->setFocus(Qt::MouseFocusReason);
    EXPECT_TRUE(WaitUntil([this] { return QApplication::focusWidget() == Find<QWidget>("cmdFileData"); }));

    dialogs.Choose(s.UserDir + "/pts.100");
    QTest::mouseClick(Find<QPushButton>("cmdFileData"), Qt::LeftButton);
    EXPECT_EQ(Find<QLineEdit>("timeData")->text(), "pts.100");
}

TEST_F(Binding, SuggestFillsTheStartingValuesFromTheDataAsIfTyped) {
    std::string data = "x y\r\n";
    for (int i = 0; i <= 100; ++i)
        data += std::to_string(i) + " " + std::to_string(5 + 20 / (1 + std::pow((i - 40) / 4.0, 2))) + "\r\n";
    WriteBytes(s.UserDir + "/pk.dat", data);
    Choose("Lorentzian");
    for (auto [name, text] : {std::pair{"timeData", "pk.dat"}, {"Line0", "2"}, {"nPoints", "101"}, {"nTerms", "1"},
                              {"xnorm", ""}, {"ynorm", ""}}) {
        Find<QLineEdit>(name)->selectAll();
        QTest::keyClicks(Find<QLineEdit>(name), text);
        if (!*text) QTest::keyClick(Find<QLineEdit>(name), Qt::Key_Delete);
    }
    s.DataChanged = false;
    auto* suggest = Find<QPushButton>("cmdSuggest");
    EXPECT_EQ(suggest->text(), "Su&ggest");
    QTest::mouseClick(suggest, Qt::LeftButton);
    EXPECT_EQ(Find<QLineEdit>("xnorm")->text(), "100");
    EXPECT_EQ(Find<QLineEdit>("PeakLocations")->text(), "0.4");
    EXPECT_TRUE(s.DataChanged);
    // A data file that is not there: a message, and the boxes stay.
    QTest::keyClicks(Find<QLineEdit>("timeData"), "x");
    dialogs.Answer(mb::OK);
    QTest::mouseClick(suggest, Qt::LeftButton);
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(dialogs.boxes[0], (ShownBox{"No starting values proposed: The data file \"" + s.UserDir +
                                              "/pk.datx\" cannot be read: File not found.",
                                          "Suggest starting values", mb::Exclamation}));
    EXPECT_EQ(Find<QLineEdit>("PeakLocations")->text(), "0.4");
}

TEST_F(Binding, CalculatorEvaluatesTheModelFileChosenInTheList) {
    WriteBytes(program + "/demos/line.equ", "Std Dev = 0.25\r\ny = 2*x + 1\r\n");
    window->tabs()->setCurrentIndex(static_cast<int>(Tab::Calculator));
    QListView* list = window->findChild<ui::CalculatorPage*>()->fileList();
    ASSERT_TRUE(WaitUntil([list] { return list->model()->rowCount(list->rootIndex()) == 1; }));
    list->setCurrentIndex(list->model()->index(0, 0, list->rootIndex()));

    auto* x = Find<QLineEdit>("tbXvalue");
    x->selectAll();
    QTest::keyClicks(x, "2.5E-1");
    QTest::mouseClick(Find<QPushButton>("cmdCalculate"), Qt::LeftButton);
    EXPECT_EQ(Find<QLineEdit>("tbYanswer")->text(), "1.5");
}

}  // namespace
}  // namespace quillet::testing
