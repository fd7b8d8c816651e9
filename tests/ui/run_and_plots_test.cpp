// A demo run through the run window, and the viewers of what it leaves.
#include <QCheckBox>
#include <QComboBox>
#include <QTableWidget>
#include <cmath>
#include <QChart>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <QValueAxis>
#include <QXYSeries>

#include "ui/demos_page.h"
#include "ui/output_viewer.h"
#include "ui/plot_file.h"
#include "ui/plot_viewer.h"
#include "ui/series_window.h"
#include "support/run_command.h"
#include "ui_fixture.h"

namespace quillet::testing {
namespace {

using RunAndPlots = UiFixture;

TEST_F(RunAndPlots, ADemoListedWithWhatItFitsRunsInTheRunWindowWhichClosesAfterExitAndThePlotsShowTheCurve) {
    QTreeWidget* list = window->demos()->list();
    ASSERT_EQ(list->topLevelItemCount(), 1);
    EXPECT_EQ(list->topLevelItem(0)->text(1), "Lorentzian, 3 terms, 100 points of data.100. first note");
    Find<QCheckBox>("AutoExit")->click();
    bool blocked = false;
    // While the script runs, the run window is the modal window: the main form takes no input.
    QTimer::singleShot(0, [&blocked] { blocked = UiFixture::Showing<ui::RunWindow>() == QApplication::activeModalWidget(); });
    ASSERT_TRUE(window->demos()->Select("ExDemo.Fit"));
    window->demos()->RunSelected();  // returns once the run window has closed itself
    EXPECT_TRUE(blocked);

    QTest::mouseClick(Find<QPushButton>("cmdPlots"), Qt::LeftButton);
    auto* plots = Showing<ui::PlotViewer>();
    ASSERT_NE(plots, nullptr);
    EXPECT_TRUE(plots->windowTitle().endsWith("exdemo.plt"));
    EXPECT_EQ(static_cast<QXYSeries*>(plots->residualChart()->series().at(0))->at(2), QPointF(0, 0.1));

    window->OpenLastOutput();
    auto* output = Showing<ui::OutputViewer>();
    ASSERT_NE(output, nullptr);
    EXPECT_EQ(output->text(), "report of ExDemo.Fit\n");
}

TEST_F(RunAndPlots, ASeriesOfDataFilesRunsInTheRunWindowAndItsTableShows) {
    std::filesystem::copy_file(QUILLET_CLI, program + "/quillet-cli");
    for (int k = 0; k < 3; ++k) {
        std::string data = "x y\r\n";
        for (int i = 0; i < 60; ++i) data += std::to_string(i) + " " + std::to_string(1 + (k + 1) * std::exp(-0.1 * i)) + "\r\n";
        WriteBytes(s.UserDir + "/e" + std::to_string(k) + ".dat", data);
    }
    const std::string record = R"({"Answers": ["e0.dat", "Exponential", "2", "60", "1", "10", "1", "1", "1", "-1"]})";
    ASSERT_EQ(RunProgram(QUILLET_CLI, {"write", "S.Fit"}, record, s.UserDir).status, 0);
    s.CurrentFile = "S.Fit";
    s.DataChanged = false;
    Find<QCheckBox>("AutoExit")->click();
    window->FitSeries({"e0.dat", "e1.dat", "e2.dat"});  // returns once the run window has closed itself
    auto* results = Showing<ui::SeriesWindow>();
    ASSERT_NE(results, nullptr);
    ASSERT_EQ(results->table()->rowCount(), 3);
    EXPECT_EQ(results->table()->item(2, 1)->text(), "e2.dat");
    EXPECT_EQ(results->table()->item(2, 2)->text(), "converged");
    EXPECT_EQ(results->parameter()->count(), 3);  // Y0, A(1), B(1)
    EXPECT_EQ(results->table()->item(1, 7)->text(), "2");     // A(1) of the second file
    EXPECT_EQ(results->table()->item(1, 9)->text(), "-0.1");  // B(1), per unit of x
}

TEST(PlotFile, ReadsHeadersFollowsTheColumnsHeaderAndNamesABadLine) {
    TempDir dir;
    struct Case {
        const char* bytes;
        bool ok;
        const char* error;
    } cases[] = {
        {"# title: T\r\n# engine: unknown\r\n# x: X   y: Volts\r\n# rss: 1   stddev: 0.06\r\n"
         "# columns: fit\tresidual\tx\ty\r\n1\t2\t3\t4\r\n",
         true, ""},
        {"# columns: x\ty\tfit\tresidual\r\n1\t2\t3\t4\r\n1\t2\tthree\t4\r\n", false, "line 3"},
        {"# columns: x\ty\tfit\tresidual\r\n1\t2\t3\r\n", false, "line 2"},
        {"# title: nothing\r\n", false, "holds no points"},
    };
    for (const auto& c : cases) {
        WriteBytes(dir / "p.plt", c.bytes);
        ui::PlotData d;
        QString error;
        EXPECT_EQ(ui::ReadPlotFile(QString::fromStdString(dir / "p.plt"), d, error), c.ok) << c.bytes;
        EXPECT_TRUE(error.contains(c.error)) << error.toStdString();
        if (c.ok) {
            EXPECT_EQ(d.title, "T");
            EXPECT_EQ(d.yLabel, "Volts");
            EXPECT_EQ(d.stddev, "0.06");
            EXPECT_EQ(d.data.at(0), QPointF(3, 4));
            EXPECT_EQ(d.fit.at(0), QPointF(3, 1));
            EXPECT_EQ(d.residuals.at(0), QPointF(3, 2));
        }
    }
}

TEST(PlotViewer, ZoomsBothChartsTogetherExportsPngAndSvgAndNamesAMissingFile) {
    TempDir dir;
    ui::PlotViewer viewer;
    ASSERT_TRUE(viewer.Load(QUILLET_UI_TEST_DATA "/curve.plt"));
    viewer.show();
    auto* x = static_cast<QValueAxis*>(viewer.curveChart()->axes(Qt::Horizontal).at(0));
    auto* residualX = static_cast<QValueAxis*>(viewer.residualChart()->axes(Qt::Horizontal).at(0));
    const double span = x->max() - x->min();
    viewer.ZoomIn();
    EXPECT_LT(x->max() - x->min(), span * 0.75);
    EXPECT_DOUBLE_EQ(residualX->max(), x->max());
    viewer.ResetZoom();
    EXPECT_DOUBLE_EQ(x->max() - x->min(), span);

    ASSERT_TRUE(viewer.ExportPng(QString::fromStdString(dir / "plots.png")));
    EXPECT_EQ(ReadBytes(dir / "plots.png").substr(0, 4), "\x89PNG");
    ASSERT_TRUE(viewer.ExportSvg(QString::fromStdString(dir / "plots.svg")));
    EXPECT_NE(ReadBytes(dir / "plots.svg").find("Residuals"), std::string::npos);

    ui::PlotViewer missing;
    EXPECT_FALSE(missing.Load("/nonexistent/none.plt"));
    EXPECT_TRUE(missing.windowTitle().endsWith("none.plt"));
}

}  // namespace
}  // namespace quillet::testing
