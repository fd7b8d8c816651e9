#pragma once
// Runs a program with arguments (no shell), feeding stdin and capturing stdout, stderr and status.
#include <string>
#include <vector>

namespace quillet::testing {

struct CommandResult {
    int status = -1;  // exit status; -1 when the program did not exit normally
    std::string out;
    std::string err;
};

CommandResult RunProgram(const std::string& program, const std::vector<std::string>& args,
                         const std::string& input = {}, const std::string& workingDir = {});

}  // namespace quillet::testing
