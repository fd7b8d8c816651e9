#include "ui/chart_series.h"

#include <QPen>
#include <algorithm>

namespace quillet::ui {

QScatterSeries* Points(const QString& name, const QList<QPointF>& points, QColor color, qreal size) {
    auto* s = new QScatterSeries;
    s->setName(name);
    s->setMarkerSize(size);
    s->setColor(color);
    s->setBorderColor(color);
    s->replace(points);
    return s;
}

QLineSeries* Line(const QString& name, QList<QPointF> points, QColor color) {
    std::sort(points.begin(), points.end(), [](const QPointF& a, const QPointF& b) { return a.x() < b.x(); });
    auto* s = new QLineSeries;
    s->setName(name);
    s->setPen(QPen(color, 2));
    s->replace(points);
    return s;
}

}  // namespace quillet::ui
