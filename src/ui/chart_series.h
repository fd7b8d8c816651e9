#pragma once
// The two kinds of series the plots draw: measured points and a curve through them.
#include <QColor>
#include <QLineSeries>
#include <QList>
#include <QPointF>
#include <QScatterSeries>

namespace quillet::ui {

QScatterSeries* Points(const QString& name, const QList<QPointF>& points, QColor color, qreal size = 6);
// The points sorted by x, joined by a line two pixels wide.
QLineSeries* Line(const QString& name, QList<QPointF> points, QColor color);

}  // namespace quillet::ui
