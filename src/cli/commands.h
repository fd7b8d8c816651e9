#pragma once
// quillet-cli subcommands register themselves here; main() dispatches by name.
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quillet::cli {

// Returns the process exit status.
using CommandFn = std::function<int(const std::vector<std::string>& args)>;

struct Command {
    std::string name;
    std::string usage;    // "quillet-cli read FILE"
    std::string summary;  // one line for --help
    CommandFn run;
};

std::vector<Command>& Commands();
const Command& FindCommand(const std::string& name);

struct Registrar {
    explicit Registrar(Command c) { Commands().push_back(std::move(c)); }
};

// Prints the usage of `c` to stderr and returns 2: a wrong call.
int UsageError(const Command& c, const std::string& why = {});
// The positional arguments of a command that takes no options: "--" ends the options, so an
// argument after it may begin with "-"; another "--..." before it is refused with the usage of
// `c` (nothing is returned, and the command returns 2).
std::optional<std::vector<std::string>> PositionalArgs(const Command& c, const std::vector<std::string>& args);
// True when args holds "--help" or "-h" before any "--".
bool WantsHelp(const std::vector<std::string>& args);

}  // namespace quillet::cli
