#pragma once
// A pass over the data in blocks of rows, cut into parts that run side by side. The cut
// depends on the number of points only, never on the machine, so a fit gives the same numbers
// on one core as on many.
#include <cstddef>
#include <functional>
#include <vector>

namespace quillet::fitting {

inline constexpr std::size_t kBlockRows = 256;

// How many parts a pass over n points is cut into.
int PartsFor(std::size_t n);

// Runs the jobs side by side, the first on this thread. When some fail, the first of them in
// the list has its exception rethrown, so errors come in the order of the data.
void RunSideBySide(const std::vector<std::function<void()>>& jobs);

// Calls visit(part, first, rows) for every block of every part; the first part on this thread,
// the others on threads of their own. Blocks of one part come in order.
void PassInParts(std::size_t n, int parts, const std::function<void(int, std::size_t, std::size_t)>& visit);

}  // namespace quillet::fitting
