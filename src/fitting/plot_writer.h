#pragma once
// The plot file: data, fitted values and residuals in columns under a header.
#include <string>

#include "fitting/completed_fit.h"

namespace quillet::fitting {

// The plot file's name from the response file's name: a name ending in ".gif" (any case)
// or ".plt" (exactly) stays; otherwise its last extension becomes ".plt" and the whole is
// lower-cased.
std::string PlotFileName(const std::string& responseName);

// Header lines beginning with "#", then one tab-separated row per point; CR LF line ends.
std::string PlotText(const CompletedFit& fit);

}  // namespace quillet::fitting
