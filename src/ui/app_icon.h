#pragma once
#include <QIcon>

namespace quillet::ui {

// The program's icon from the pixels rendered at build time; null if they are missing.
QIcon AppIcon();

}  // namespace quillet::ui
