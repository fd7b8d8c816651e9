#pragma once
// "~Quillet.out": the run's report, for a person to read.
#include <string>
#include <vector>

#include "fitting/completed_fit.h"

namespace quillet::fitting {

inline constexpr const char* kReportFileName = "~Quillet.out";

// The report of a fit that ran; `written` lists the files the run wrote beside the report
// (empty after a fit that diverged).
std::string ReportText(const CompletedFit& fit, const std::string& responsePath,
                       const std::vector<std::string>& written);

// The report of a run that could not start: what is wrong with its input.
std::string BadInputReport(const std::string& responsePath, const std::string& runDir, const std::string& message);

}  // namespace quillet::fitting
