#pragma once
// The plot file: data, fitted values and residuals in columns under a header.
#include <string>

#include "fitting/completed_fit.h"

namespace quillet::fitting {

// Header lines beginning with "#", then one tab-separated row per point; CR LF line ends.
std::string PlotText(const CompletedFit& fit);

}  // namespace quillet::fitting
