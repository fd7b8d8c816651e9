#pragma once
// "New from Data File": a response file made beside a data file chosen in any folder, with
// the answers the data themselves give, saved at once so that data and answers share a folder.
#include <functional>
#include <string>

#include "model/app_state.h"

namespace quillet::fitting {

struct DataLines {
    int first = 0;  // 1-based line of the first point
    int count = 0;  // points on the lines from `first` on, up to the first line that is not one
};

// Where the points of the data file `path` lie: header lines before them are skipped. Raises
// FitInputError naming the file when no line holds one X and one Y value.
DataLines FindDataLines(const std::string& path);

// The response file's name for the data file `dataName`: its extension replaced by ".Fit",
// every character the run's command line would split or a shell would read replaced by "_",
// and "-2", "-3", ... added while `taken` answers true for the name.
std::string ResponseNameFor(const std::string& dataName, const std::function<bool(const std::string&)>& taken);

// The command: asks to save changed answers, lets the person choose the data file, fills
// questions 1, 3, 4, 6 and 7 from it (keeping the model), saves the new response file beside
// the data and makes it current. A file without points changes nothing and says why.
void NewFromDataFile(AppState& s);

}  // namespace quillet::fitting
