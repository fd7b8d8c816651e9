// The widgets mirror the form model both ways: edits reach the library's handlers, and what
// the handlers change shows in the widgets.
#include <QCheckBox>
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

TEST_F(Binding, TypingInEveryAnswerBoxMarksTheAnswersChanged) {
    Choose("Modified Lorentzian");  // the model that asks all twelve questions
    for (const char* name : {"timeData", "Line0", "nPoints", "nTerms", "xnorm", "ynorm", "Y0", "Amplitude", "PW50",
                             "PeakLocations", "Amplitude2", "Note1", "Note2", "Remax", "Rho"}) {
        s.DataChanged = false;
        auto* box = Find<QLineEdit>(name);
        QTest::keyClicks(box, "7");
        EXPECT_TRUE(s.DataChanged) << name;
        EXPECT_TRUE(box->text().endsWith("7")) << name;
    }
    EXPECT_EQ(s.form.nTerms.text, "7");
    EXPECT_EQ(s.form.Note2.text, "Your notes go here7");
}

// The widgets show and label what the form model decides; the library's tests cover every model.
TEST_F(Binding, WidgetsShowHideAndLabelAsTheChosenModelSays) {
    Choose("Sine");
    EXPECT_EQ(Find<QComboBox>("Methods")->currentText(), "Sine");
    for (const char* name : {"Y0", "Question8", "PeakLocations", "Combo10", "Rho", "SolvQuestion6"})
        EXPECT_TRUE(Shown(name)) << name;
    for (const char* name : {"Amplitude2", "Question12"}) EXPECT_FALSE(Shown(name)) << name;
    EXPECT_EQ(Caption("Question10"), QString::fromUtf8("10. »"));
    EXPECT_EQ(Find<QComboBox>("Combo10")->currentText(), "Sine frequencies ... B(i) * Xnorm ...starting value(s)?");
    EXPECT_EQ(Caption("SolvQuestion3"), " 2000           3. »  EvalMax: Max. # of model evaluations.");
    EXPECT_EQ(Find<QLineEdit>("Delta")->toolTip(), "EvalMax");

    Choose("Bell Curve");
    for (const char* name : {"Y0", "Question8", "Combo10", "Rho", "SolvQuestion6"})
        EXPECT_FALSE(Shown(name)) << name;
    EXPECT_EQ(Caption("Question9"),
              QString::fromUtf8("9. »  Bell Curve T0(s) ... T0(i) / Xnorm ...starting value(s)?"));
}

TEST_F(Binding, SolverButtonsFillAndBlankTheBoxes) {
    Choose("Power");
    QTest::mouseClick(Find<QPushButton>("cmdEditSolverData"), Qt::LeftButton);
    EXPECT_EQ(Find<QLineEdit>("Delta")->text(), "1.E-7");
    EXPECT_TRUE(Find<QLineEdit>("Remax")->isEnabled());
    EXPECT_EQ(Find<QPushButton>("cmdEditSolverData")->text(), "&Edit Defaults");
    QTest::mouseClick(Find<QPushButton>("cmdDefaultSolverData"), Qt::LeftButton);
    EXPECT_EQ(Find<QLineEdit>("Delta")->text(), "");
    EXPECT_FALSE(Find<QLineEdit>("Remax")->isEnabled());
}

TEST_F(Binding, FocusOnTheDataFileGoesToItsBrowseButtonAndSeriesBoxesSelectAll) {
    window->activateWindow();
    ASSERT_TRUE(WaitUntil([this] { return window->isActiveWindow(); }));
    Find<QLineEdit>("timeData")->setFocus(Qt::MouseFocusReason);
    EXPECT_TRUE(WaitUntil([this] { return QApplication::focusWidget() == Find<QWidget>("cmdFileData"); }));
    EXPECT_TRUE(Shown("cmdFileData"));

    auto* peaks = Find<QLineEdit>("PeakLocations");
    peaks->setFocus(Qt::MouseFocusReason);
    EXPECT_TRUE(WaitUntil([peaks] { return peaks->selectedText() == "-1  0  1"; }));
}

TEST_F(Binding, BrowseButtonTakesTheChosenDataFileIntoQuestionOne) {
    dialogs.Choose(s.UserDir + "/pts.100");
    QTest::mouseClick(Find<QPushButton>("cmdFileData"), Qt::LeftButton);
    EXPECT_EQ(Find<QLineEdit>("timeData")->text(), "pts.100");
}

TEST_F(Binding, CalculatorEvaluatesTheModelFileChosenInTheList) {
    WriteBytes(program + "/demos/line.equ", "Std Dev = 0.25\r\ny = 2*x + 1\r\n");
    window->tabs()->setCurrentIndex(static_cast<int>(Tab::Calculator));
    EXPECT_EQ(s.form.activeTab, Tab::Calculator);
    auto* page = window->findChild<ui::CalculatorPage*>();
    ASSERT_TRUE(WaitUntil([page] { return page->fileList()->model()->rowCount(page->fileList()->rootIndex()) == 1; }));
    QListView* list = page->fileList();
    list->setCurrentIndex(list->model()->index(0, 0, list->rootIndex()));
    EXPECT_EQ(s.form.calcSelectedFile, "line.equ");
    EXPECT_EQ(s.form.calcFolder, program + "/demos");

    auto* x = Find<QLineEdit>("tbXvalue");
    x->selectAll();
    QTest::keyClicks(x, "2.5E-1");
    QTest::mouseClick(Find<QPushButton>("cmdCalculate"), Qt::LeftButton);
    EXPECT_EQ(Find<QLineEdit>("tbYanswer")->text(), "1.5");
    EXPECT_EQ(Find<QLineEdit>("tbDeviation")->text(), "0.25");
}

}  // namespace
}  // namespace quillet::testing
