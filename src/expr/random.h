#pragma once
// The single-precision uniform generator behind "rnd", "rnd(", "random(" and "rand(".
#include <cstdint>

namespace quillet::expr {

class SingleRandom {
public:
    // A number in [0, 1): a negative seed gives the repeatable number of that seed, 0 the
    // last number again, a positive seed the next number.
    float Rnd(double seed);
    float Next();

private:
    std::uint32_t state_ = 0x2F6B1C05u;
    float last_ = 0;
};

}  // namespace quillet::expr
