#pragma once
#include <cmath>  // defines __GLIBC__ where it applies

// The processor's sticky flags for overflow, division by zero and invalid operations. A solve
// that checks only at its end reads them once after: with finite inputs, any step that would
// have raised leaves one of them set (or raises itself). Reading them costs about as much as
// three steps, so they are cleared only after a solve found them set, not before each one:
// flags that other code left set cost one solve done twice. Only with the GNU C library, whose
// exp, log and pow raise the flags on overflow: the Windows runtime's exp overflows to infinity
// without raising them.
#if defined(__x86_64__) && defined(__GNUC__) && defined(__GLIBC__)
#include <immintrin.h>

namespace quillet::expr {
inline constexpr bool kFlagsReadable = true;
inline constexpr unsigned kErrorFlags = _MM_EXCEPT_INVALID | _MM_EXCEPT_DIV_ZERO | _MM_EXCEPT_OVERFLOW;

// Writes the control register only when a flag is set: writing it costs more than reading.
inline void ClearErrorFlags() {
    const unsigned csr = _mm_getcsr();
    if (csr & kErrorFlags) _mm_setcsr(csr & ~kErrorFlags);
}
// `y` passes through an empty volatile asm first, so that the compiler cannot move the
// arithmetic that produced it behind the read of the flags.
inline bool ErrorFlagged(double& y) {
    asm volatile("" : "+x"(y));
    return (_mm_getcsr() & kErrorFlags) != 0;
}
}  // namespace quillet::expr
#else
namespace quillet::expr {
inline constexpr bool kFlagsReadable = false;
inline void ClearErrorFlags() {}
inline bool ErrorFlagged(double&) { return true; }
}  // namespace quillet::expr
#endif
