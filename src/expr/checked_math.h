#pragma once
// Double arithmetic that raises the classic run-time errors instead of producing
// infinities or NaNs: 11 for a division by zero (6 for 0/0), 6 for a result that is not
// finite or an integer that does not fit 32 bits, 5 for a root or logarithm outside its domain.
#include <cstdint>

namespace quillet::expr {

double Finite(double r);
double Add(double a, double b);
double Sub(double a, double b);
double Mul(double a, double b);
double Div(double a, double b);
double Pow(double a, double b);
double Exp(double x);
double Log(double x);
double Sqr(double x);
double Atn(double x);
double Sgn(double x);

// Rounds to the nearest 32-bit integer, halves to the even neighbour.
std::int32_t RoundToLong(double x);
// Both operands rounded, then the quotient truncated toward zero.
double IntDiv(double a, double b);
// Both operands rounded, then the remainder with the sign of a.
double IntMod(double a, double b);

}  // namespace quillet::expr
