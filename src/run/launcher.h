#pragma once
// The run launcher: hands the response file to the solver's script and waits for it.
#include <string>

#include "model/app_state.h"

namespace quillet {

void FileRun2(AppState& s);
void RunSubmitted(AppState& s);
void FileRun(AppState& s);
// Creates the output folder of the current RunDir when it is missing.
void EnsureOutputDir(AppState& s);
// The Demos tab's run button: runs the example `demoFile` of the demos folder.
void RunDemo(AppState& s, const std::string& demoFile);

// Where the last run left its report and plot file. Each launch records the run's folder
// (userPath) and the plot file (plotFile) in the registry, where the maker's plot programs
// look for them too, so the viewers find the last run also after a restart.
struct LastRun {
    std::string outputFolder;  // the run folder's "output"
    std::string plotFile;      // file name only; empty before the first run
};
LastRun FindLastRun(Env& env);

}  // namespace quillet
