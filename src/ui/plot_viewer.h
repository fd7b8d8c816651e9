#pragma once
// The plot viewer: the data points, the fitted curve and the residuals of a run, with zoom
// and export to PNG and SVG.
#include <QDialog>

#include "ui/plot_file.h"

class QChart;
class QChartView;
class QLabel;
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
    PlotData data_;
};

}  // namespace quillet::ui
