#pragma once
// Where the last run left its report and plot file. Each launch records the run's folder
// (userPath) and the plot file's name (plotFile) in the registry, where the maker's plot
// programs look for them too; the viewers read the same values, so they find the last run
// also after a restart.
#include <string>

#include "env/env.h"

namespace quillet::ui {

struct LastRun {
    std::string outputFolder;  // the run folder's "output"
    std::string plotFile;      // file name only; empty before the first run
};

LastRun FindLastRun(Env& env);

}  // namespace quillet::ui
