#include "ui/desktop_ports.h"

namespace quillet::ui {

void DesktopPorts::Wire(Env& env) {
    env.dialogs = &dialogs;
    env.clock = &clock;
    env.runner = &runner;
    env.shell = &shell;
}

void DesktopPorts::SetParent(QWidget* window) {
    dialogs.setParent(window);
    runner.setParent(window);
}

}  // namespace quillet::ui
