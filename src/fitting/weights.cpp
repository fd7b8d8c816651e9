#include "fitting/weights.h"

#include <cmath>

namespace quillet::fitting {

std::vector<double> ResidualWeights(const std::vector<double>& v, bool weighted) {
    if (!weighted) return {};
    double largest = 0;
    for (double y : v) largest = std::max(largest, std::fabs(y));
    if (largest == 0) return {};
    std::vector<double> w;
    w.reserve(v.size());
    for (double y : v) w.push_back(std::sqrt(1 / (std::fabs(y) / largest + 0.01)));
    return w;
}

}  // namespace quillet::fitting
