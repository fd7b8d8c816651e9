// quillet-cli fit: the default solver behind "Submit Batch Run".
#include <filesystem>
#include <iostream>

#include "cli/commands.h"
#include "fitting/run_fit.h"

namespace quillet::cli {
namespace {

int RunFitCommand(const std::vector<std::string>& args) {
    std::vector<std::string> rest = args;
    if (!rest.empty() && rest.front() == "--") rest.erase(rest.begin());
    if (rest.empty() || rest.size() > 2) return UsageError(FindCommand("fit"), "expects FILE and at most one RUNDIR");
    std::error_code ec;
    const std::string cwd = std::filesystem::current_path(ec).string();
    return fitting::RunFit(rest[0], rest.size() > 1 ? rest[1] : std::string(), cwd, std::cout, std::cerr);
}

}  // namespace

static Registrar fitCommand({"fit", "quillet-cli fit FILE [RUNDIR]",
                             "Fits the response file's model to its data; writes the report, the plot file and "
                             "the math model into \"output\" beside it.",
                             RunFitCommand});

}  // namespace quillet::cli
