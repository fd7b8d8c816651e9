// The way from a data file anywhere to a fit on the desktop: New from Data File, the data view
// beside the questions, and what the run window, the messages and the viewers say after a run.
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>

#include "model/form_events.h"
#include "ui/data_view.h"
#include "ui/demos_page.h"
#include "ui/output_viewer.h"
#include "ui/plot_viewer.h"
#include "ui_fixture.h"

namespace quillet::testing {
namespace {

class FirstFit : public UiFixture {
protected:
    QString Text(const char* name) const { return Find<QLineEdit>(name)->text(); }
    void Type(const char* name, const QString& text) {
        auto* edit = Find<QLineEdit>(name);
        edit->selectAll();
        QTest::keyClicks(edit, text);
    }
    ui::DataView* View() const { return window->dataView(); }
    void WaitForRedraw() { ASSERT_TRUE(WaitUntil([this] { return !View()->redrawPending(); })); }
    // The run script leaves `report` and, when given, the plot file `plt`; exits with `status`.
    void Script(const std::string& report, const std::string& plt, int status) {
        WriteBytes(program + "/report.txt", report);
        WriteBytes(program + "/run-FitW.sh",
                   "mkdir -p output\ncp \"$(dirname \"$0\")/report.txt\" output/~Quillet.out\n" +
                       (plt.empty() ? "rm -f output/exdemo.plt\n" : "cp \"$(dirname \"$0\")/" + plt + "\" output/exdemo.plt\n") +
                       "exit " + std::to_string(status) + "\n");
    }
    void RunDemo() {
        ASSERT_TRUE(window->demos()->Select("ExDemo.Fit"));
        window->demos()->RunSelected();
    }
};

TEST_F(FirstFit, NewFromDataFileAnswersFromAFileWithAHeaderAndSavesBesideIt) {
    std::filesystem::create_directories(dir / "my data");
    WriteBytes(dir / "my data/two peaks.txt", "Two peaks\r\nx  y\r\n0 1.5\r\n1 4\r\n2 2.5\r\n3 0.5\r\n");
    window->binder().Call([](AppState& st) {
        SetMethodsText(st, "Lorentzian");  // kept
        st.DataChanged = false;
    });
    dialogs.Choose(dir / "my data/two peaks.txt");
    QTest::mouseClick(Find<QPushButton>("cmdNewFromData"), Qt::LeftButton);

    EXPECT_EQ(Text("timeData"), "two peaks.txt");
    EXPECT_EQ(Text("Line0"), "3");
    EXPECT_EQ(Text("nPoints"), "4");
    EXPECT_EQ(window->windowTitle(), "two_peaks.Fit ... Quillet, a Calculus-level program");
    EXPECT_EQ(ReadBytes(dir / "my data/two_peaks.Fit"),
              "two_peaks  \t\t!* 12, and 0          November 16, 2026 @ 1:33 AM\r\n"
              "two peaks.txt  \t\t! 1. \xBB  Filename that contains your XY data to be fitted?\r\n"
              "Lorentzian  \t\t! 2. \xBB  Model name: Lorentzian, Mod. Lorentzian, Exponential, Power, etc\r\n"
              "3  \t\t! 3. \xBB  Line number of XY data file where to start reading data.\r\n"
              "4  \t\t! 4. \xBB  Number of points to use in curve fit?\r\n"
              "-999  \t\t! 5. \xBB  Number of terms to use in chosen series?\r\n"
              "1  \t\t! 6. \xBB  X-axis normalization factor?\r\n"
              "10  \t\t! 7. \xBB  Y-axis normalization factor?\r\n"
              "-999  \t\t! 8. \xBB  Y-axis offset ... Y0 / Ynorm ... 1 value?\r\n"
              "-999  \t\t! 9. \xBB  Lorentz amplitude(s) ... A(i) / Ynorm ...starting value?\r\n"
              "-999  \t\t! 10. \xBB  Pulse Width @ 50% Peak amplitude(s) ... PW50(i) / Xnorm ...star\r\n"
              "-999  \t\t! 11. \xBB  Peak locations or offset ... t0(i) / Xnorm ...starting value(s)\r\n"
              "N  \t\t! 19. \xBB Add weight for points near x-axis (ie. y ~ 0)\r\n"
              "-999  \t\t! 20. \xBB Note1\r\n"
              "-999  \t\t!     \xBB Note2\r\n"
              "N\t\t! 22. \xBB Want to change solver variables?\r\n");
    // The data view shows the four points at once the answers rest.
    WaitForRedraw();
    EXPECT_EQ(View()->points().size(), 4);
}

TEST_F(FirstFit, TheDataViewRedrawsTheStartingCurveShortlyAfterAnAnswerChangesAndNamesABadLine) {
    WriteBytes(s.UserDir + "/pk.dat", "0 1\n1 3\n2 9\n3 3\n4 1\nfive 0\n");
    s.DataDir = s.UserDir;
    const std::pair<const char*, const char*> answers[] = {
        {"timeData", "pk.dat"}, {"Line0", "1"}, {"nPoints", "5"}, {"nTerms", "1"}, {"xnorm", "1"}, {"ynorm", "1"},
        {"Y0", "1"},            {"Amplitude", "8"}, {"PW50", "1"}, {"PeakLocations", "2"}};
    window->binder().Call([](AppState& st) { SetMethodsText(st, "Lorentzian"); });
    for (const auto& [name, text] : answers) Type(name, text);
    WaitForRedraw();
    const QList<QPointF> before = View()->startCurve();
    ASSERT_EQ(before.size(), 400);
    EXPECT_DOUBLE_EQ(before.front().x(), 0);
    EXPECT_DOUBLE_EQ(before.back().x(), 4);

    Type("PeakLocations", "1");
    EXPECT_TRUE(View()->redrawPending());  // typing does not wait for the file
    EXPECT_EQ(View()->startCurve(), before);
    WaitForRedraw();
    EXPECT_NE(View()->startCurve(), before);
    EXPECT_TRUE(View()->message().isEmpty()) << View()->message().toStdString();

    Type("nPoints", "6");
    WaitForRedraw();
    EXPECT_EQ(View()->message(), "Line 6 of the data file \"" + QString::fromStdString(s.UserDir) +
                                     "/pk.dat\" holds \"five\", which is not a number.");
    EXPECT_TRUE(View()->points().isEmpty());
}

TEST_F(FirstFit, AFailedRunSaysWhyInAMessageTheRunWindowAndThePlotViewerWhichOffersTheReport) {
    Script("Response file: x\r\n\r\nThe fit was not started: Line 1 of the data file \"d\" holds \"t\", which is "
           "not a number.\r\n",
           "", 2);
    // The run window stays open ("wait"): read its last line, then close it.
    QString lastLine;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        auto* run = Showing<ui::RunWindow>();
        if (run && !run->running() && run->statusLine() != "Running ...") {
            lastLine = run->statusLine();
            run->accept();
        }
    });
    poll.start(10);
    dialogs.Answer(mb::OK);
    RunDemo();
    poll.stop();
    const QString reason = "Line 1 of the data file \"d\" holds \"t\", which is not a number.";
    EXPECT_EQ(lastLine, "The run failed: " + reason);
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(dialogs.boxes[0].text, "The run failed: " + reason.toStdString() + "\r\n\r\nThe report is " + program +
                                         "/demos/output/~Quillet.out (View > Last Output).");

    window->OpenLastPlots();
    auto* plots = Showing<ui::PlotViewer>();
    ASSERT_NE(plots, nullptr);
    EXPECT_EQ(plots->infoText(), "The last run failed: " + reason);
    EXPECT_FALSE(plots->chartsShown());
    plots->ShowReport();
    auto* output = Showing<ui::OutputViewer>();
    ASSERT_NE(output, nullptr);
    EXPECT_TRUE(output->text().contains("The fit was not started"));
}

TEST_F(FirstFit, OpenViewersReloadAfterEveryRun) {
    Find<QCheckBox>("AutoExit")->click();
    RunDemo();  // the stand-in solver leaves "report of ExDemo.Fit" and the sample plot
    window->OpenLastPlots();
    window->OpenLastOutput();
    auto* plots = Showing<ui::PlotViewer>();
    auto* output = Showing<ui::OutputViewer>();
    ASSERT_TRUE(plots && output);
    const qsizetype points = plots->data().data.size();

    WriteBytes(program + "/two.plt", "# verdict: converged\r\n# rss: 0.123456789012   stddev: 2\r\n1\t2\t2\t0\r\n3\t4\t4\t0\r\n");
    Script("Result: converged\r\n", "two.plt", 0);
    RunDemo();
    EXPECT_EQ(Showing<ui::PlotViewer>(), plots);  // the same window, reloaded
    EXPECT_NE(points, 2);
    EXPECT_EQ(plots->data().data.size(), 2);
    EXPECT_EQ(plots->infoText(), "Verdict: converged    Residual sum of squares: 0.1234568    Standard deviation: 2    Points: 2");
    EXPECT_EQ(output->text(), "Result: converged\n");
}

}  // namespace
}  // namespace quillet::testing
