#include "expr/random.h"

#include <cstring>

namespace quillet::expr {

float SingleRandom::Next() {
    state_ = state_ * 1664525u + 1013904223u;
    // The top 24 bits fill a float's mantissa exactly, so the value stays below 1.
    last_ = static_cast<float>(state_ >> 8) * (1.0f / 16777216.0f);
    return last_;
}

float SingleRandom::Rnd(double seed) {
    if (seed > 0) return Next();
    if (seed == 0) return last_;
    std::uint64_t bits;
    std::memcpy(&bits, &seed, sizeof bits);
    state_ = static_cast<std::uint32_t>(bits ^ (bits >> 32));
    return Next();
}

}  // namespace quillet::expr
