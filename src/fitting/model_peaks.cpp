// Peak-shaped terms: Lorentzian, absorptive plus dispersive Lorentzian, Gaussian bell.
#include <cmath>

#include "fitting/model_terms.h"

namespace quillet::fitting::terms {

double Lorentzian(int, const double* q, double u, double* dq) {
    const double a = q[0], t0 = q[2];
    const double r = 1 / q[1];  // one division instead of three: these run for every point
    const double s = 2 * (u - t0) * r;
    const double l = 1 / (1 + s * s);
    const double f = a * l;
    if (dq) {
        const double dfds = -2 * f * s * l;
        dq[0] = l;
        dq[1] = dfds * (-s * r);
        dq[2] = dfds * (-2 * r);
    }
    return f;
}

double ModifiedLorentzian(int, const double* q, double u, double* dq) {
    const double a = q[0], t0 = q[2], b = q[3];
    const double r = 1 / q[1];
    const double s = 2 * (u - t0) * r;
    const double l = 1 / (1 + s * s);
    const double f = (a + b * s) * l;
    if (dq) {
        const double dfds = b * l - 2 * f * s * l;
        dq[0] = l;
        dq[1] = dfds * (-s * r);
        dq[2] = dfds * (-2 * r);
        dq[3] = s * l;
    }
    return f;
}

double BellCurve(int, const double* q, double u, double* dq) {
    const double t0 = q[0], a = q[1], b = q[2];
    const double r = 1 / b;
    const double z = (u - t0) * r;
    const double g = std::exp(-z * z / 2);
    const double f = a * g;
    if (dq) {
        dq[0] = f * z * r;
        dq[1] = g;
        dq[2] = f * z * z * r;
    }
    return f;
}

}  // namespace quillet::fitting::terms
