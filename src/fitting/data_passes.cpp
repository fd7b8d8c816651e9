#include "fitting/data_passes.h"

#include <algorithm>
#include <exception>
#include <thread>
#include <vector>

namespace quillet::fitting {

namespace {

// Below this a second thread costs more than the half pass it saves.
constexpr std::size_t kPointsPerPart = 16384;
constexpr int kMostParts = 2;

void PassOver(std::size_t begin, std::size_t end, int part,
              const std::function<void(int, std::size_t, std::size_t)>& visit) {
    for (std::size_t first = begin; first < end; first += kBlockRows) visit(part, first, std::min(kBlockRows, end - first));
}

}  // namespace

int PartsFor(std::size_t n) { return static_cast<int>(std::clamp<std::size_t>(n / kPointsPerPart, 1, kMostParts)); }

void PassInParts(std::size_t n, int parts, const std::function<void(int, std::size_t, std::size_t)>& visit) {
    // Whole blocks per part, so that the blocks are the same however many parts there are.
    const std::size_t blocks = (n + kBlockRows - 1) / kBlockRows;
    auto bound = [&](int part) { return std::min(n, blocks * static_cast<std::size_t>(part) / static_cast<std::size_t>(parts) * kBlockRows); };
    std::vector<std::thread> others;
    std::vector<std::exception_ptr> failures(static_cast<std::size_t>(parts));
    for (int part = 1; part < parts; ++part)
        others.emplace_back([&, part] {
            try {
                PassOver(bound(part), bound(part + 1), part, visit);
            } catch (...) {
                failures[static_cast<std::size_t>(part)] = std::current_exception();
            }
        });
    try {
        PassOver(0, bound(1), 0, visit);
    } catch (...) {
        failures[0] = std::current_exception();
    }
    for (auto& t : others) t.join();
    for (const auto& f : failures)
        if (f) std::rethrow_exception(f);
}

}  // namespace quillet::fitting
