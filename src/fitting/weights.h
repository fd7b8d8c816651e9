#pragma once
// Question 19: points near y = 0 count more.
#include <vector>

namespace quillet::fitting {

// Residual multipliers for the normalised Y values: sqrt(1 / (|v| / M + 0.01)) with M the
// largest |v|, so a point on the axis weighs about 100 times one at the largest |v| in the sum of
// squares. Empty when `weighted` is false or all Y are 0 (every point weighs 1).
std::vector<double> ResidualWeights(const std::vector<double>& v, bool weighted);

}  // namespace quillet::fitting
