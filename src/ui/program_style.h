#pragma once
#include <QProxyStyle>

namespace quillet::ui {

// The platform's style, with the two pictures the first window needs drawn instead of read from
// the style's image files: the arrow of an overflowing menu bar (asked for when the menu bar is
// made) and a group box's frame. Reading any image file loads every image-format plugin, a good
// part of the program's start.
class ProgramStyle : public QProxyStyle {
  public:
    using QProxyStyle::QProxyStyle;
    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option = nullptr,
                       const QWidget* widget = nullptr) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget = nullptr) const override;
};

}  // namespace quillet::ui
