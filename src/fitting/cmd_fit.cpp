// quillet-cli fit: the default solver behind "Submit Batch Run".
#include <filesystem>
#include <iostream>

#include "cli/commands.h"
#include "fitting/run_fit.h"

namespace quillet::cli {
namespace {

int RunFitCommand(const std::vector<std::string>& args) {
    const Command& cmd = FindCommand("fit");
    const auto rest = PositionalArgs(cmd, args);
    if (!rest) return 2;
    if (rest->empty() || rest->size() > 2) return UsageError(cmd, "expects FILE and at most one RUNDIR");
    std::error_code ec;
    const std::string cwd = std::filesystem::current_path(ec).string();
    return fitting::RunFit(rest->front(), rest->size() > 1 ? (*rest)[1] : std::string(), cwd, std::cout, std::cerr);
}

}  // namespace

static Registrar fitCommand({"fit", "quillet-cli fit FILE [RUNDIR]",
                             "Fits the response file's model to its data; writes the report, the plot file and "
                             "the math model into \"output\" beside it.",
                             RunFitCommand});

}  // namespace quillet::cli
