"""One least-squares fit with SciPy's Levenberg-Marquardt (MINPACK), run as its own process by
bench/fit_peers so that its time and peak memory are those of a whole run, like the other
programs'.

    python3 lm_fit_scipy.py JOB.json

JOB holds the model ("Lorentzian", "Exponential" or "Sine"), the data file (x y per line),
Xnorm, Ynorm and the starting values in normalised units as [Y0, term 1..., term 2..., ...]
(per term A, PW50, t0 / A, B / A, B, C). Prints one JSON line: the residual sum of squares
in physical units, the number of trial steps and SciPy's status.
"""
import json
import sys

import numpy as np
from scipy.optimize import least_squares

TWO_PI = 2.0 * np.pi


def lorentzian(p, u, want_jac):
    f = np.full_like(u, p[0])
    jac = np.empty((u.size, p.size)) if want_jac else None
    if want_jac:
        jac[:, 0] = 1.0
    for k in range(1, p.size, 3):
        a, w, t = p[k:k + 3]
        s = 2.0 * (u - t) / w
        q = 1.0 / (1.0 + s * s)
        f += a * q
        if not want_jac:
            continue
        dfds = -2.0 * a * s * q * q
        jac[:, k] = q
        jac[:, k + 1] = dfds * (-s / w)
        jac[:, k + 2] = dfds * (-2.0 / w)
    return f, jac


def exponential(p, u, want_jac):
    f = np.full_like(u, p[0])
    jac = np.empty((u.size, p.size)) if want_jac else None
    if want_jac:
        jac[:, 0] = 1.0
    for k in range(1, p.size, 2):
        a, b = p[k:k + 2]
        e = np.exp(b * u)
        f += a * e
        if not want_jac:
            continue
        jac[:, k] = e
        jac[:, k + 1] = a * u * e
    return f, jac


def sine(p, u, want_jac):
    f = np.full_like(u, p[0])
    jac = np.empty((u.size, p.size)) if want_jac else None
    if want_jac:
        jac[:, 0] = 1.0
    for k in range(1, p.size, 3):
        a, b, c = p[k:k + 3]
        theta = TWO_PI * b * u + c
        sin, cos = np.sin(theta), np.cos(theta)
        f += a * sin
        if not want_jac:
            continue
        jac[:, k] = sin
        jac[:, k + 1] = a * cos * TWO_PI * u
        jac[:, k + 2] = a * cos
    return f, jac


MODELS = {"Lorentzian": lorentzian, "Exponential": exponential, "Sine": sine}


def main():
    with open(sys.argv[1]) as f:
        job = json.load(f)
    model = MODELS[job["model"]]
    data = np.loadtxt(job["data"])
    u, v = data[:, 0] / job["xnorm"], data[:, 1] / job["ynorm"]
    fit = least_squares(lambda p: model(p, u, False)[0] - v, np.array(job["start"], dtype=float),
                        jac=lambda p: model(p, u, True)[1], method="lm")
    rss = float(np.sum(fit.fun ** 2)) * job["ynorm"] ** 2
    # With an analytic Jacobian MINPACK evaluates the model once per trial step, after the
    # first evaluation at the start.
    print(json.dumps({"rss": rss, "steps": int(fit.nfev) - 1, "status": int(fit.status),
                      "message": fit.message}))


if __name__ == "__main__":
    main()
