#pragma once
// Numbers as people type them and as the solver writes them: "." whatever the locale.
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillet::fitting {

// "1.E-7", ".2", "+3", "-1.5e3" (blanks around are ignored); nothing for any other text
// and for values that are not finite.
std::optional<double> ParseNumber(std::string_view text);

// The fields of a line separated by runs of blanks, tabs and commas.
std::vector<std::string_view> SplitFields(std::string_view line);
// The same into `fields`, reusing its memory line after line.
void SplitFields(std::string_view line, std::vector<std::string_view>& fields);

// The shortest text that reads back to the same double ("0.1", "1e-05").
std::string FormatNumber(double v);
// The same text appended to `out`, for long tables.
void AppendNumber(std::string& out, double v);

// `digits` significant digits for a person ("0.0123", "1.5e+07").
std::string FormatShort(double v, int digits = 6);

}  // namespace quillet::fitting
