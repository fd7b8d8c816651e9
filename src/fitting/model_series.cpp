// Growth terms: exponentials and powers of u.
#include <cmath>

#include "fitting/model_terms.h"

namespace quillet::fitting::terms {

double Exponential(int, const double* q, double u, double* dq) {
    const double a = q[0], b = q[1];
    const double e = std::exp(b * u);
    if (dq) {
        dq[0] = e;
        dq[1] = a * u * e;
    }
    return a * e;
}

double Power(int term, const double* q, double u, double* dq) {
    // Repeated multiplication keeps the sign of u and is exact for small powers.
    double up = 1;
    for (int k = 0; k < term; ++k) up *= u;
    if (dq) dq[0] = up;
    return q[0] * up;
}

}  // namespace quillet::fitting::terms
