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

// The bytes of a file the fit reads; FitInputError naming `what` ("data file") and the
// reason when it cannot be read.
std::string ReadForFit(const std::string& path, const std::string& what);

// `count` points from line `firstLine` (1-based) on; each line holds X and Y separated by
// blanks, tabs or commas. Raises FitInputError naming the file and the line.
DataPoints ReadDataPoints(const std::string& path, int firstLine, int count);

// Refuses data that no curve of `model` can be fitted to, whatever the starting values: the
// same Y on every line, or fewer different X values than parameters. Raises FitInputError
// naming the file and the first line.
void CheckFittable(const DataPoints& data, const Model& model, const std::string& path, int firstLine);

}  // namespace quillet::fitting
