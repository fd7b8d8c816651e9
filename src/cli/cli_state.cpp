#include "cli/cli_state.h"

#include <filesystem>

#include "env/paths.h"
#include "model/form_events.h"
#include "solver/solver_tab.h"

namespace quillet::cli {

CliSession::CliSession() {
    state.env.dialogs = &dialogs;
    state.env.clock = &clock;
    std::error_code ec;
    state.env.currentFolder = std::filesystem::current_path(ec).string();
    state.env.programDir = DefaultProgramDir();
    state.env.parentDir = JoinPath(state.env.programDir, "..");
    InitFormDesign(state);
    Questions_Visible(state);
    selectSolverQuest(state);
}

}  // namespace quillet::cli
