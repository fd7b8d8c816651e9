#include "expr/flat_index.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace quillet::testing {
namespace {

// Keys that share their low or high halves, zero among them, through several growths: each
// keeps the value it was first stored with.
TEST(FlatIndex, KeepsTheFirstValueOfEachKeyThroughGrowth) {
    expr::FlatIndex index;
    auto key = [](std::uint32_t i) { return i % 2 ? std::uint64_t{i} << 32 : std::uint64_t{i} * 0x10000; };
    for (std::uint32_t i = 0; i < 5000; ++i) ASSERT_EQ(index.FindOrAdd(key(i), i), i) << i;
    for (std::uint32_t i = 0; i < 5000; ++i) ASSERT_EQ(index.FindOrAdd(key(i), 99999), i) << i;
    EXPECT_EQ(index.FindOrAdd(~std::uint64_t{0}, 7), 7u);
}

}  // namespace
}  // namespace quillet::testing
