// Wave terms: a sine, and a sine under an exponential envelope.
#include <cmath>
#include <numbers>

#include "fitting/model_terms.h"

namespace quillet::fitting::terms {

double Sine(int, const double* q, double u, double* dq) {
    const double a = q[0], b = q[1], c = q[2];
    const double theta = 2 * std::numbers::pi * b * u + c;
    const double sn = std::sin(theta);
    if (dq) {
        const double ac = a * std::cos(theta);
        dq[0] = sn;
        dq[1] = ac * 2 * std::numbers::pi * u;
        dq[2] = ac;
    }
    return a * sn;
}

double SineExponential(int, const double* q, double u, double* dq) {
    const double a = q[0], b = q[1], c = q[2], d = q[3];
    const double theta = 2 * std::numbers::pi * b * u + c;
    const double sn = std::sin(theta);
    const double e = std::exp(d * u);
    const double f = a * sn * e;
    if (dq) {
        const double ace = a * std::cos(theta) * e;
        dq[0] = sn * e;
        dq[1] = ace * 2 * std::numbers::pi * u;
        dq[2] = ace;
        dq[3] = f * u;
    }
    return f;
}

}  // namespace quillet::fitting::terms
