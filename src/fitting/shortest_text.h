#pragma once
// The shortest text that reads back to the same double, exactly as std::to_chars writes it,
// faster for the numbers data files hold: those with at most nine significant digits.
#include <cstddef>

namespace quillet::fitting {

// Room WriteShortest needs at `out`: the text is at most 24 characters, the rest is scratch.
inline constexpr std::size_t kShortestRoom = 48;

// The text written at `out`, where there must be kShortestRoom bytes. Returns its end.
char* WriteShortest(char* out, double v);

}  // namespace quillet::fitting
