#pragma once
// The built-in functions, looked up by their whole opener text ("sin("), and the constants.
#include <cmath>
#include <string_view>

#include "expr/checked_math.h"
#include "expr/random.h"

namespace quillet::expr {

// Degree factor and radian factor, deliberately not the exact quotients of pi and 180.
inline constexpr double kR = 0.017453292519943278;
inline constexpr double kD = 57.29577951308238;

// An angle in the current unit, in radians.
inline double AngleIn(double x, bool degrees) { return degrees ? Mul(x, kR) : x; }
// The table's "sin(", "cos(", "tan(", "min(" and "max(", shared with the ops a compiled formula
// has for them.
inline double Sine(double x, bool degrees) { return std::sin(AngleIn(x, degrees)); }
inline double Cosine(double x, bool degrees) { return std::cos(AngleIn(x, degrees)); }
inline double Tangent(double x, bool degrees) { return Finite(std::tan(AngleIn(x, degrees))); }
inline double Smaller(double x, double y) { return x < y ? x : y; }
inline double Larger(double x, double y) { return x > y ? x : y; }
// The table's "atn(" and "arctan(": the angle in the current unit.
inline double ArcTangent(double x, bool degrees) { return degrees ? Mul(Atn(x), kD) : Atn(x); }

struct FunctionCall {
    double x;  // the first argument
    double y;  // the last argument; x again when there is only one
    bool degrees;
    SingleRandom& random;
};

using FunctionFn = double (*)(const FunctionCall&);

// nullptr for an opener that is not in the table.
FunctionFn FindFunction(std::string_view opener);
// True for the functions that draw from the random sequence.
bool DrawsRandomNumbers(std::string_view opener);

// "pi", "w" and "e"; false for any other name. "rnd" is a new random number each time.
bool FindConstant(std::string_view name, double& value);

}  // namespace quillet::expr
