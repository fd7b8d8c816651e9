#pragma once
// The plot file: data, fitted values and residuals in columns under a header.
#include <string>

#include "env/files.h"
#include "fitting/completed_fit.h"

namespace quillet::fitting {

// Header lines beginning with "#", then one tab-separated row per point; CR LF line ends.
// Handed to `sink` in pieces of whole lines, in Windows-1252, so that a million points are
// never held as one text.
void WritePlot(const CompletedFit& fit, const ByteSink& sink);

}  // namespace quillet::fitting
