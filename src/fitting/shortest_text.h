#pragma once
// The shortest text that reads back to the same double, exactly as std::to_chars writes it,
// faster for the numbers data files hold: those with at most nine significant digits.
#include <cstddef>

namespace quillet::fitting {

// The text written at `out`; there must be room for 24 characters. Returns its end.
char* WriteShortest(char* out, double v);

}  // namespace quillet::fitting
