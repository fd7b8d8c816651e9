#pragma once
// A fresh program state for one command-line call: console ports, the form as designed,
// the current folder at the process's working directory.
#include <memory>

#include "cli/console_ports.h"
#include "model/app_state.h"

namespace quillet::cli {

struct CliSession {
    ConsoleDialogs dialogs;
    SystemClock clock;
    AppState state;
    CliSession();
};

}  // namespace quillet::cli
