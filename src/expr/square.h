#pragma once
// x^2 is by far the most common power in fitted models, and the library's pow is slow next to
// a product. Results must stay those of pow, which is not always a * a: pow rounds its own
// approximation of the square, and near a rounding boundary it may land on the other side.
#include <cstdint>
#include <cstring>

namespace quillet::expr {

// True, with the square in `square`, when pow(a, 2) is certain to be the rounded product.
// The GNU C library's pow errs before its final rounding by at most 0.011 units in the last
// place from its exp (0.009 with fused multiply-add), plus 1.5 * 2^-15 units per unit of
// |2 log a| from its log: under 0.014 units for squares between 2^-64 and 2^64 (the worst seen
// in 1.5e9 trials: 0.0088). A square more than 0.02 units from a rounding boundary therefore
// comes out as a * a. Elsewhere, and with other libraries, the caller asks pow.
inline bool SquareAsPowGivesIt(double a, double& square) {
#ifdef __GLIBC__
    std::uint64_t bits;
    std::memcpy(&bits, &a, sizeof bits);
    // Only where the bound holds: 2^-32 <= |a| < 2^32. Zero, NaN and infinities fail too.
    if (((bits >> 52) & 0x7FF) - (1023 - 32) >= 64) return false;
    // The exact square of a's 53-bit mantissa m has 105 or 106 bits; a * a keeps the top 53,
    // so the low 52 or 53 bits, which m * m modulo 2^64 holds exactly, say where it rounded.
    // Shifted to the top, they are the fraction of a unit it dropped, in 64-bit fixed point.
    // (Rounding never carries m * m up to a power of two, where the units change.)
    const std::uint64_t m = (bits & 0x000FFFFFFFFFFFFFu) | 0x0010000000000000u;
    const int shift = m >= 6369051672525773u ? 11 : 12;  // m * m >= 2^105 from there on
    const std::uint64_t dropped = (m * m) << shift;
    // Within 0.02 units (2^64 / 50) of the midpoint between two neighbours: pow decides.
    constexpr std::uint64_t kMargin = 0x051EB851EB851EB8u, kHalf = std::uint64_t{1} << 63;
    if (dropped - (kHalf - kMargin) <= 2 * kMargin) [[unlikely]]
        return false;
    square = a * a;
    return true;
#else
    (void)a;
    (void)square;
    return false;
#endif
}

}  // namespace quillet::expr
