#include "run/command_line.h"

namespace quillet {

std::string RunScriptName() {
#ifdef _WIN32
    return "run-FitW.bat";
#else
    return "run-FitW.sh";
#endif
}

std::vector<std::string> SplitCommandLine(const std::string& commandLine) {
    std::vector<std::string> parts;
    std::string current;
    for (char c : commandLine) {
        if (c == ' ') {
            if (!current.empty()) parts.push_back(current);
            current.clear();
        } else {
            current += c;
        }
    }
    if (!current.empty()) parts.push_back(current);
    return parts;
}

}  // namespace quillet
