#pragma once
// Runs the solver's command line and waits, without a window: the console of the
// command-line companion and the tests use it; the desktop shows its own run window.
#include "env/ports.h"

namespace quillet {

class ProcessRunner : public CommandRunner {
public:
    // Linux: /bin/sh runs the script with the arguments split at blanks, no shell parsing.
    // Windows: "cmd /C " + the command line in a new console.
    int Run(const std::string& commandLine, const std::string& workingDir, bool keepOpen) override;
};

}  // namespace quillet
