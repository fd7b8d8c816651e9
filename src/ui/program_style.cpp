#include "ui/program_style.h"

#include <QGroupBox>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QStyleOption>

namespace quillet::ui {

namespace {

// Two chevrons pointing right, or down; drawn only when the arrow is first shown.
class ChevronEngine : public QIconEngine {
public:
    explicit ChevronEngine(bool down) : down_(down) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const QPalette palette = QGuiApplication::palette();
        const QColor colour = palette.color(mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active,
                                            QPalette::WindowText);
        const qreal side = std::min(rect.width(), rect.height());
        const qreal unit = side / 8;
        QPainterPath path;
        for (int i = 0; i < 2; ++i) {
            const qreal at = unit * (2 + 2.5 * i);
            path.moveTo(at, unit * 2);
            path.lineTo(at + unit * 2, unit * 4);
            path.lineTo(at, unit * 6);
        }
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.x() + (rect.width() - side) / 2, rect.y() + (rect.height() - side) / 2);
        if (down_) {
            painter->translate(side, 0);
            painter->rotate(90);
        }
        painter->setPen(QPen(colour, std::max<qreal>(1, unit * 0.9), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->drawPath(path);
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return pixmap;
    }

    QIconEngine* clone() const override { return new ChevronEngine(down_); }

private:
    bool down_;
};

// The pictures drawn here are Fusion's; any other style keeps its own.
bool IsFusion(const QStyle& style) {
    return style.name().compare("fusion", Qt::CaseInsensitive) == 0;
}

// Where the frame's top edge lies: below the title, as the style puts it.
int FrameTop(const QStyle& style, const QStyleOption& option, const QWidget* widget) {
    constexpr int kGap = 3;
    const auto* box = qobject_cast<const QGroupBox*>(widget);
    if (box && !box->isCheckable() && box->title().isEmpty()) return kGap;
    return std::max(style.pixelMetric(QStyle::PM_ExclusiveIndicatorHeight), option.fontMetrics.height()) + kGap;
}

// The style's frame picture: a faint grey line with rounded corners one pixel in from the left
// and top, around a barely darker inside with a darker inner rim.
void DrawGroupFrame(QPainter* painter, const QRect& frame) {
    const QRectF line = QRectF(frame).adjusted(1.5, 1.5, -0.5, -0.5);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QColor(0x75, 0x75, 0x75, 0x2e));
    painter->setBrush(QColor(0, 0, 0, 0x03));
    painter->drawRoundedRect(line, 2, 2);
    painter->setPen(QColor(0, 0, 0, 0x05));
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(line.adjusted(1, 1, -1, -1), 1, 1);
    painter->restore();
}

}  // namespace

void ProgramStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                 const QWidget* widget) const {
    if (element != PE_FrameGroupBox || !option || !painter || !IsFusion(*baseStyle())) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        return;
    }
    DrawGroupFrame(painter, option->rect.adjusted(0, FrameTop(*this, *option, widget), 0, 0));
}

QIcon ProgramStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const {
    if (!IsFusion(*baseStyle())) return QProxyStyle::standardIcon(icon, option, widget);
    if (icon == SP_ToolBarHorizontalExtensionButton) return QIcon(new ChevronEngine(false));
    if (icon == SP_ToolBarVerticalExtensionButton) return QIcon(new ChevronEngine(true));
    return QProxyStyle::standardIcon(icon, option, widget);
}

}  // namespace quillet::ui
