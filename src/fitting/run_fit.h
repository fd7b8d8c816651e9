#pragma once
// One run of the default solver: response file in; report, plot file and math model out.
#include <iosfwd>
#include <string>

namespace quillet::fitting {

// Fits the response file `responseFile` (relative names are taken from `currentFolder`) and
// writes into the folder "output" beside it: "~Quillet.out", the plot file and the math-model
// file. `runDir` is reported only. Progress goes to `out`, failures to `err` as well as to the
// report. Returns 0 after a converged fit, 1 after a fit that ran and did not converge or
// could not be written, 2 on bad input (then only the report is written).
int RunFit(const std::string& responseFile, const std::string& runDir, const std::string& currentFolder,
           std::ostream& out, std::ostream& err);

}  // namespace quillet::fitting
