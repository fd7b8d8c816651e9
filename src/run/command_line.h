#pragma once
// The solver's command line: the run script in the program folder and its arguments.
#include <string>
#include <vector>

namespace quillet {

// "run-FitW.sh" on Linux, "run-FitW.bat" on Windows.
std::string RunScriptName();
// Splits at blanks; a run of blanks splits once, so an empty argument never appears.
// Nothing else is interpreted: quotes, ";" and "$" are ordinary characters.
std::vector<std::string> SplitCommandLine(const std::string& commandLine);

}  // namespace quillet
