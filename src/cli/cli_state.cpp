#include "cli/cli_state.h"

#include <filesystem>
#include <iostream>

#include "env/errors.h"
#include "model/response_file.h"

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

int CliSession::SaveForm(const std::string& name, const std::string& folder) {
    try {
        WriteAnsFile(state, name, folder);
    } catch (const RuntimeError& e) {
        std::cerr << UnexpectedErrorText(e) << "\n";
        return 1;
    }
    return state.PathStatus == "Ok" ? 0 : 1;
}

}  // namespace quillet::cli
