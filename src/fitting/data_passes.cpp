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

void RunSideBySide(const std::vector<std::function<void()>>& jobs) {
    std::vector<std::exception_ptr> failures(jobs.size());
    auto run = [&](std::size_t k) {
        try {
            jobs[k]();
        } catch (...) {
            failures[k] = std::current_exception();
        }
    };
    std::vector<std::thread> others;
    for (std::size_t k = 1; k < jobs.size(); ++k) others.emplace_back(run, k);
    if (!jobs.empty()) run(0);
    for (auto& t : others) t.join();
    for (const auto& f : failures)
        if (f) std::rethrow_exception(f);
}

void PassInParts(std::size_t n, int parts, const std::function<void(int, std::size_t, std::size_t)>& visit) {
    // Whole blocks per part, so that the blocks are the same however many parts there are.
    const std::size_t blocks = (n + kBlockRows - 1) / kBlockRows;
    auto bound = [&](int part) {
        return std::min(n, blocks * static_cast<std::size_t>(part) / static_cast<std::size_t>(parts) * kBlockRows);
    };
    std::vector<std::function<void()>> jobs;
    for (int part = 0; part < parts; ++part)
        jobs.emplace_back([&, part] { PassOver(bound(part), bound(part + 1), part, visit); });
    RunSideBySide(jobs);
}

}  // namespace quillet::fitting
