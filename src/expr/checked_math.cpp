#include "expr/checked_math.h"

#include <cmath>
#include <limits>

#include "expr/errors.h"

namespace quillet::expr {

void RaiseArithmetic(int number) { RaiseEq(number); }

std::int32_t RoundToLong(double x) {
    double r = std::nearbyint(x);
    if (!(r >= std::numeric_limits<std::int32_t>::min() && r <= std::numeric_limits<std::int32_t>::max()))
        RaiseEq(err::Overflow);
    return static_cast<std::int32_t>(r);
}

double IntDiv(double a, double b) {
    std::int64_t ia = RoundToLong(a), ib = RoundToLong(b);
    if (ib == 0) RaiseEq(err::DivisionByZero);
    std::int64_t q = ia / ib;  // only INT32_MIN / -1 leaves the 32-bit range
    if (q > std::numeric_limits<std::int32_t>::max()) RaiseEq(err::Overflow);
    return static_cast<double>(q);
}

double IntMod(double a, double b) {
    std::int64_t ia = RoundToLong(a), ib = RoundToLong(b);
    if (ib == 0) RaiseEq(err::DivisionByZero);
    return static_cast<double>(ia % ib);
}

}  // namespace quillet::expr
