#pragma once
// The calculator tab: evaluates a math-model file (".equ") at the X typed by the person.
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "model/app_state.h"

namespace quillet {

// Reads the selected model file, shows its standard deviation in tbDeviation and the model's
// Y at the X of tbXvalue in tbYanswer, and returns that Y. A missing file or an unusable X
// is reported through the Dialogs port and returns nothing; so is an error raised by the
// expression class, whose box shows the error's own description. The boxes keep their
// contents when the calculation stops before them.
std::optional<double> cmdCalculate_Click(AppState& s);

// The model of the math-model file at `path` as a function of x, evaluated at every X of `xs`
// in one call (the plot viewer draws fitted curves with it). False when the file cannot be
// read or the formula raises an error.
bool ModelCurve(const std::string& path, std::span<const double> xs, std::vector<double>& ys);

// True when every character of the X text is a digit, "+", "-", ".", ">" or "<" (and there
// is at least one).
bool ValidmodelX(const std::string& text);

}  // namespace quillet
