#pragma once
// The data view beside the questions: the points the run would fit, the curve of the starting
// values, and after a run the fitted curve, the residuals and the parameters. Redrawn shortly
// after the answers change, so typing never waits for a file to be read.
#include <QList>
#include <QPointF>
#include <QTimer>
#include <QWidget>

#include "model/app_state.h"

class QChartView;
class QLabel;
class QTableWidget;
class QVBoxLayout;

namespace quillet::ui {

class DataView : public QWidget {
    Q_OBJECT
public:
    explicit DataView(AppState& s, QWidget* parent = nullptr);
    // Redraws once the answers have rested for a moment.
    void ScheduleRedraw();
    void Redraw();
    bool redrawPending() const { return timer_.isActive(); }

    QList<QPointF> points() const;
    QList<QPointF> startCurve() const;
    QList<QPointF> fittedCurve() const;
    QString message() const;
    QString verdict() const;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void MakeViews();

    AppState& s_;
    QTimer timer_;
    QVBoxLayout* layout_;
    QChartView* curveView_ = nullptr;
    QChartView* residualView_ = nullptr;
    QLabel* message_;
    QLabel* verdict_;
    QTableWidget* table_ = nullptr;
};

}  // namespace quillet::ui
