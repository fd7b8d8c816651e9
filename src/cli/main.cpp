#include <iostream>
#include <stdexcept>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

#include "cli/commands.h"

namespace quillet::cli {

std::vector<Command>& Commands() {
    static std::vector<Command> all;
    return all;
}

const Command& FindCommand(const std::string& name) {
    for (const auto& c : Commands())
        if (c.name == name) return c;
    throw std::logic_error("unknown command " + name);
}

int UsageError(const Command& c, const std::string& why) {
    if (!why.empty()) std::cerr << "quillet-cli " << c.name << ": " << why << "\n";
    std::cerr << "usage: " << c.usage << "\n";
    return 2;
}

std::optional<std::vector<std::string>> PositionalArgs(const Command& c, const std::vector<std::string>& args) {
    std::vector<std::string> positional;
    bool options = true;
    for (const auto& a : args) {
        if (options && a == "--") {
            options = false;
        } else if (options && a.rfind("--", 0) == 0) {
            UsageError(c, "unknown option " + a);
            return std::nullopt;
        } else {
            positional.push_back(a);  // "-1" is a value, not an option
        }
    }
    return positional;
}

bool WantsHelp(const std::vector<std::string>& args) {
    for (const auto& a : args) {
        if (a == "--") return false;
        if (a == "--help" || a == "-h") return true;
    }
    return false;
}

}  // namespace quillet::cli

static void PrintOverview(std::ostream& out) {
    out << "usage: quillet-cli COMMAND [ARGS]\n\ncommands:\n";
    for (const auto& c : quillet::cli::Commands()) out << "  " << c.usage << "\n      " << c.summary << "\n";
}

// A command runs once and ends, so memory it frees is kept for its next allocation rather than
// handed back to the system: a fit over thousands of points would otherwise fault in fresh
// pages for each of its large matrices.
static void KeepFreedMemory() {
#if defined(__GLIBC__)
    mallopt(M_MMAP_THRESHOLD, 64 << 20);
    mallopt(M_TRIM_THRESHOLD, 128 << 20);
#endif
}

int main(int argc, char** argv) {
    KeepFreedMemory();
    using namespace quillet::cli;
    std::vector<std::string> args(argv + 1, argv + argc);
    if (args.empty()) {
        PrintOverview(std::cerr);
        return 2;
    }
    if (args[0] == "--help" || args[0] == "-h" || args[0] == "help") {
        PrintOverview(std::cout);
        return 0;
    }
    for (const auto& c : Commands()) {
        if (c.name != args[0]) continue;
        std::vector<std::string> rest(args.begin() + 1, args.end());
        if (WantsHelp(rest)) {
            std::cout << "usage: " << c.usage << "\n" << c.summary << "\n";
            return 0;
        }
        return c.run(rest);
    }
    std::cerr << "quillet-cli: unknown command '" << args[0] << "'\n";
    PrintOverview(std::cerr);
    return 2;
}
