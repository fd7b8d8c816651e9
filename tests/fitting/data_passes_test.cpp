#include "fitting/data_passes.h"

#include <gtest/gtest.h>

#include <mutex>
#include <vector>

namespace quillet::fitting {
namespace {

// Every point is visited once, in whole blocks that follow each other within a part, whatever
// the number of points; large data are cut into more than one part.
TEST(PassInParts, VisitsEveryPointOnceInOrderedBlocks) {
    for (std::size_t n : {0u, 1u, 255u, 256u, 257u, 16383u, 32768u, 32769u, 100001u}) {
        const int parts = PartsFor(n);
        std::vector<int> seen(n, 0);
        std::vector<std::size_t> next(static_cast<std::size_t>(parts), 0);
        std::vector<bool> started(static_cast<std::size_t>(parts), false);
        std::mutex lock;
        PassInParts(n, parts, [&](int part, std::size_t first, std::size_t rows) {
            const std::lock_guard<std::mutex> hold(lock);
            const auto p = static_cast<std::size_t>(part);
            EXPECT_EQ(first % kBlockRows, 0u) << n;
            if (started[p]) {
                EXPECT_EQ(first, next[p]) << n << " part " << part;
            }
            started[p] = true;
            next[p] = first + rows;
            for (std::size_t i = first; i < first + rows; ++i) ++seen.at(i);
        });
        for (std::size_t i = 0; i < n; ++i) ASSERT_EQ(seen[i], 1) << "point " << i << " of " << n;
        if (n >= 100000) {
            EXPECT_GT(parts, 1) << n;
        }
    }
}

TEST(PassInParts, AFailureInAnyPartReachesTheCaller) {
    for (int failing : {0, 1})
        EXPECT_THROW(PassInParts(40000, 2,
                                 [&](int part, std::size_t, std::size_t) {
                                     if (part == failing) throw std::runtime_error("no memory");
                                 }),
                     std::runtime_error)
            << failing;
}

}  // namespace
}  // namespace quillet::fitting
