#pragma once
// The desktop's adapters of the library's ports, wired into one environment.
#include "env/env.h"
#include "ui/qt_dialogs.h"
#include "ui/run_window.h"
#include "ui/shell_opener.h"

namespace quillet::ui {

struct DesktopPorts {
    QtDialogs dialogs;
    SystemClock clock;
    RunWindowRunner runner;
    QtShellOpener shell;

    void Wire(Env& env);
    // Boxes and the run window belong to the main window once it exists.
    void SetParent(QWidget* window);
};

}  // namespace quillet::ui
