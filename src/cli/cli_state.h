#pragma once
// A fresh program state for one command-line call: console ports, the form as designed,
// the current folder at the process's working directory.
#include <memory>
#include <string>

#include "cli/console_ports.h"
#include "model/app_state.h"

namespace quillet::cli {

struct CliSession {
    ConsoleDialogs dialogs;
    SystemClock clock;
    AppState state;
    CliSession();
    // Saves the form as `folder`/`name` exactly as Save does; the exit status of the command
    // (0, or 1 with the program's message on stderr).
    int SaveForm(const std::string& name, const std::string& folder);
};

}  // namespace quillet::cli
