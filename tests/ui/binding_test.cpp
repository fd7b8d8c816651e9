// The widgets mirror the form model both ways: edits reach the library's handlers, and what
// the handlers change shows in the widgets.
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

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

TEST_F(Binding, FocusOnTheDataFileGoesToItsBrowseButtonWhichTakesTheChosenFile) {
    window->activateWindow();
    ASSERT_TRUE(WaitUntil([this] { return window->isActiveWindow(); }));
    Find<QLineEdit>("timeData")->setFocus(Qt::MouseFocusReason);
    EXPECT_TRUE(WaitUntil([this] { return QApplication::focusWidget() == Find<QWidget>("cmdFileData"); }));

    dialogs.Choose(s.UserDir + "/pts.100");
    QTest::mouseClick(Find<QPushButton>("cmdFileData"), Qt::LeftButton);
    EXPECT_EQ(Find<QLineEdit>("timeData")->text(), "pts.100");
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
