#pragma once
// The XY points of a data file.
#include <string>
#include <vector>

#include "fitting/models.h"

namespace quillet::fitting {

struct DataPoints {
    std::vector<double> x;
    std::vector<double> y;
};

// `count` points from line `firstLine` (1-based) on; each line holds X and Y separated by
// blanks, tabs or commas. Raises FitInputError naming the file and the line.
DataPoints ReadDataPoints(const std::string& path, int firstLine, int count);

// Refuses data that no curve of `model` can be fitted to, whatever the starting values: the
// same Y on every line, or fewer different X values than parameters. Raises FitInputError
// naming the file and the first line.
void CheckFittable(const DataPoints& data, const Model& model, const std::string& path, int firstLine);

}  // namespace quillet::fitting
