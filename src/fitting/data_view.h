#pragma once
// What the data view beside the questions draws: the points the run would fit and the curve of
// the starting values, from the answers on the form, with the solver's own reader and models.
#include <string>
#include <vector>

#include "model/response_record.h"

namespace quillet::fitting {

struct DataViewContent {
    // The points of questions 1, 3 and 4; a large file is thinned evenly to what a plot can show.
    std::vector<double> x, y;
    int points = 0;  // read, before thinning
    // The model of questions 2 and 5 at the starting values of questions 6 to 12, over the
    // points' X range; empty when the answers do not give a curve yet.
    std::vector<double> startX, startY;
    std::string dataMessage;   // why there are no points: names the file and the line
    std::string curveMessage;  // why there is no starting curve
};

inline constexpr std::size_t kMostPointsShown = 5000;
inline constexpr int kCurveSamples = 400;

// The data view for `record`, whose data file lies in `folder`.
DataViewContent ComputeDataView(const ResponseRecord& record, const std::string& folder);

}  // namespace quillet::fitting
