#pragma once
// The XY points of a data file.
#include <string>
#include <vector>

namespace quillet::fitting {

struct DataPoints {
    std::vector<double> x;
    std::vector<double> y;
};

// `count` points from line `firstLine` (1-based) on; each line holds X and Y separated by
// blanks, tabs or commas. Raises FitInputError naming the file and the line.
DataPoints ReadDataPoints(const std::string& path, int firstLine, int count);

}  // namespace quillet::fitting
