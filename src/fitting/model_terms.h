#pragma once
// One term of each series model: value at u, and the derivatives by its parameters
// (in the order of the model's parameter groups) when dq is given. Inline, so that a fit's
// loop over thousands of points compiles each model into one tight loop.
#include <cmath>
#include <numbers>

namespace quillet::fitting::terms {

// A, PW50, t0
inline double Lorentzian(int, const double* q, double u, double* dq) {
    const double a = q[0], t0 = q[2];
    const double r = 1 / q[1];
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

// A, PW50, t0, B: the absorptive plus the dispersive part
inline double ModifiedLorentzian(int, const double* q, double u, double* dq) {
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

// T0, A, B: a Gaussian bell
inline double BellCurve(int, const double* q, double u, double* dq) {
    const double t0 = q[0], a = q[1];
    const double r = 1 / q[2];
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

// A, B
inline double Exponential(int, const double* q, double u, double* dq) {
    const double a = q[0], b = q[1];
    const double e = std::exp(b * u);
    if (dq) {
        dq[0] = e;
        dq[1] = a * u * e;
    }
    return a * e;
}

// A: the term-th power of u
inline double Power(int term, const double* q, double u, double* dq) {
    // Repeated multiplication keeps the sign of u and is exact for small powers.
    double up = 1;
    for (int k = 0; k < term; ++k) up *= u;
    if (dq) dq[0] = up;
    return q[0] * up;
}

// A, B, C
inline double Sine(int, const double* q, double u, double* dq) {
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

// A, B, C, D: a sine under an exponential envelope
inline double SineExponential(int, const double* q, double u, double* dq) {
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
