#pragma once
#include <QProxyStyle>

namespace quillet::ui {

// The platform's style, with the arrow of an overflowing menu bar or tool bar drawn instead of
// read from the style's image file: the menu bar asks for it when it is made, and reading any
// image file loads every image-format plugin, a good part of the program's start.
class ProgramStyle : public QProxyStyle {
public:
    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option = nullptr,
                       const QWidget* widget = nullptr) const override;
};

}  // namespace quillet::ui
