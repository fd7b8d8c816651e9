#pragma once
// The plot viewer: the data points, the fitted curve and the residuals of a run, with zoom
// and export to PNG and SVG.
#include <QDialog>

#include "ui/plot_file.h"

class QChart;
class QChartView;
class QLabel;
class QPushButton;
class QValueAxis;

namespace quillet::ui {

class PlotViewer : public QDialog {
    Q_OBJECT
public:
    explicit PlotViewer(QWidget* parent = nullptr);
    // Reads and shows a plot file; false (with the message shown in the window) when unreadable.
    bool Load(const QString& path);
    const PlotData& data() const { return data_; }
    QChart* curveChart() const;
    QChart* residualChart() const;
    // The text under the plots: the fit's numbers, or why there is nothing to show.
    QString infoText() const;
    bool chartsShown() const;
    // Opens the report of the run beside the plot file.
    void ShowReport();

    void ZoomIn();
    void ZoomOut();
    void ResetZoom();
    bool ExportPng(const QString& path);
    bool ExportSvg(const QString& path);

private:
    void Show();
    void Export();
    QWidget* charts_;
    QChartView* curveView_;
    QChartView* residualView_;
    QLabel* info_;
    QPushButton* report_;
    QString reportPath_;
    PlotData data_;
};

}  // namespace quillet::ui
