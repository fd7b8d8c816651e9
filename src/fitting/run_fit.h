#pragma once
// One run of the default solver: response file in; report, plot file and math model out.
#include <iosfwd>
#include <string>
#include <vector>

#include "fitting/completed_fit.h"

namespace quillet::fitting {

// Fits the response file `responseFile` (relative names are taken from `currentFolder`) and
// writes into the folder "output" beside it: "~Quillet.out", the plot file and the math-model
// file. `runDir` is reported only. Progress goes to `out`, failures to `err` as well as to the
// report. Returns 0 after a converged fit that is not flagged, 1 after a flagged fit, a fit
// that did not converge or could not be written, 2 on bad input (then only the report is written).
int RunFit(const std::string& responseFile, const std::string& runDir, const std::string& currentFolder,
           std::ostream& out, std::ostream& err);

// Where one fit is reported and written.
struct RunPlace {
    std::string responsePath;  // for the report
    std::string name;          // the response file's name, which names the plot and model files
    std::string outputDir;
    std::string runDir;
};

// The points of `dataPath` for `settings`, checked, with the answers' starting values (or
// `start`, laid out as the model's parameters, when not empty). Raises FitInputError.
CompletedFit PrepareFit(FitSettings settings, const std::string& dataPath, const std::string& runDir,
                        std::vector<double> start = {});

// Fits `fit` and writes its files into place.outputDir, with progress lines to `out` when
// `progress` and the failure to `err`; returns the exit status RunFit describes.
int FitAndWrite(CompletedFit& fit, const RunPlace& place, bool progress, std::ostream& out, std::ostream& err);

// The report of a run that did not start, and the earlier run's plot and model files removed;
// returns 2.
int RefuseRun(const RunPlace& place, const std::string& message, std::ostream& err);

}  // namespace quillet::fitting
