#pragma once
// The plot file a run leaves: headers beginning "#", then one point a line in columns.
#include <QList>
#include <QPointF>
#include <QString>

namespace quillet::ui {

struct PlotData {
    QString title;
    QString model;
    QString xLabel;
    QString yLabel;
    QString rss;
    QString stddev;
    QString verdict;  // "converged", "not converged"; empty when the file does not say
    QList<QPointF> data;       // x, y
    QList<QPointF> fit;        // x, fitted y
    QList<QPointF> residuals;  // x, residual
};

// Reads `path`; on failure returns false with a message naming the file and the line.
// Unknown headers are skipped, so the format can grow.
bool ReadPlotFile(const QString& path, PlotData& out, QString& error);

}  // namespace quillet::ui
