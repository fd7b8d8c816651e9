#pragma once
// The math-model file (".equ") that the calculator reads.
#include <string>
#include <vector>

#include "fitting/completed_fit.h"

namespace quillet::fitting {

// "Ex1.Fit" -> "Ex1.equ"; a name without ".Fit" gets ".equ" appended.
std::string EquFileName(const std::string& responseName);

// "y = " and the terms joined by " + ", over lines of at most `width` characters. A line
// never begins with "-", which the calculator's line reader could take for an empty answer.
std::vector<std::string> FormulaLines(const std::vector<std::string>& terms, std::size_t width = 100);

// First line "<label> = <standard deviation>", then the formula lines; CR LF line ends.
std::string EquText(const CompletedFit& fit);

}  // namespace quillet::fitting
