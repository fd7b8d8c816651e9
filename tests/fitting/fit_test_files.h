#pragma once
// Response and data files for the solver's tests, written with the program's own writer.
#include <array>
#include <string>
#include <vector>

namespace quillet::testing {

struct ResponseAnswers {
    std::array<std::string, 13> answers;  // questions 1..12 as typed; element 0 unused
    bool weighted = false;
    std::array<std::string, 6> solver;    // blank: question 22 is "N"
};

// Writes `folder`/`name` exactly as Save does.
void WriteResponse(const std::string& folder, const std::string& name, const ResponseAnswers& r);

// Two header lines, then "x<TAB>y" rows with 17 significant digits; CR LF line ends.
void WriteData(const std::string& path, const std::vector<double>& x, const std::vector<double>& y);

// Runs a shell command line; returns its exit status and puts its stdout into `out`.
int RunCommand(const std::string& commandLine, std::string& out);

}  // namespace quillet::testing
