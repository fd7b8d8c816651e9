#pragma once
// Double arithmetic that raises the classic run-time errors instead of producing
// infinities or NaNs: 11 for a division by zero (6 for 0/0), 6 for a result that is not
// finite or an integer that does not fit 32 bits, 5 for a root or logarithm outside its domain.
// The small ones are inline: the compiled formula calls them once per step.
#include <cmath>
#include <cstdint>

#include "env/errors.h"
#include "expr/libm_entry.h"
#include "expr/square.h"

namespace quillet::expr {

// Out of line, so that the checks below stay small enough to inline.
[[noreturn]] void RaiseArithmetic(int number);

inline double Finite(double r) {
    if (!std::isfinite(r)) [[unlikely]]
        RaiseArithmetic(err::Overflow);
    return r;
}
inline double Add(double a, double b) { return Finite(a + b); }
inline double Sub(double a, double b) { return Finite(a - b); }
inline double Mul(double a, double b) { return Finite(a * b); }
inline double Div(double a, double b) {
    if (b == 0) [[unlikely]]
        RaiseArithmetic(a == 0 ? err::Overflow : err::DivisionByZero);
    return Finite(a / b);
}
// a^2 exactly as pow gives it, mostly without calling it; not checked.
inline double SquareUnchecked(double a) {
    double square;
    if (SquareAsPowGivesIt(a, square)) return square;
    // Hidden from the optimizer, which would otherwise turn pow(a, 2) into a * a.
    volatile double two = 2;
    return LibPow(a, two);
}
inline double PowUnchecked(double a, double b) { return b == 2 ? SquareUnchecked(a) : LibPow(a, b); }
// The fast squares stay below 2^64: only the library's can overflow.
inline double Square(double a) {
    double square;
    return SquareAsPowGivesIt(a, square) ? square : Finite(SquareUnchecked(a));
}
inline double Pow(double a, double b) { return Finite(PowUnchecked(a, b)); }
inline double Exp(double x) { return Finite(LibExp(x)); }
inline double Log(double x) {
    if (!(x > 0)) [[unlikely]]
        RaiseArithmetic(err::InvalidCall);
    return LibLog(x);
}
inline double Sqr(double x) {
    if (x < 0) [[unlikely]]
        RaiseArithmetic(err::InvalidCall);
    return std::sqrt(x);
}
inline double Atn(double x) { return std::atan(x); }
inline double Sgn(double x) { return x > 0 ? 1 : x < 0 ? -1 : 0; }

// Rounds to the nearest 32-bit integer, halves to the even neighbour.
std::int32_t RoundToLong(double x);
// Both operands rounded, then the quotient truncated toward zero.
double IntDiv(double a, double b);
// Both operands rounded, then the remainder with the sign of a.
double IntMod(double a, double b);

}  // namespace quillet::expr
