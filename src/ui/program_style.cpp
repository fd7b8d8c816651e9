#include "ui/program_style.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

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

}  // namespace

QIcon ProgramStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const {
    if (icon == SP_ToolBarHorizontalExtensionButton) return QIcon(new ChevronEngine(false));
    if (icon == SP_ToolBarVerticalExtensionButton) return QIcon(new ChevronEngine(true));
    return QProxyStyle::standardIcon(icon, option, widget);
}

}  // namespace quillet::ui
