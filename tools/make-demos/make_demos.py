#!/usr/bin/env python3
"""Makes the demo response files Ex1.Fit .. Ex7.Fit and their data files.

    make_demos.py QUILLET_CLI [OUTPUT_FOLDER]

The data are the models of the default solver with Gaussian noise from fixed seeds, so the
files come out the same on every run. The response files are written by `quillet-cli write`,
the program's own writer (their header carries the date of writing).
"""
import json
import math
import os
import random
import subprocess
import sys

# Every demo in normalised units: u = x / xnorm, v = y / ynorm. "true" holds the parameters
# the data are made from, per series question; "start" the answers the person would give.
DEMOS = [
    dict(name="Ex1", model="Lorentzian", data="Ex1.100", seed=101,
         note="three Lorentzian peaks on a flat baseline",
         hint="Simulated data with noise: each peak in the plot is one term",
         x=(0.0, 0.2, 100), xnorm=10, ynorm=100, noise=0.04, sep="\t",
         y0=0.12, true=[[2.5, 1.8, 3.2], [0.12, 0.20, 0.08], [0.50, 0.95, 1.40]],
         start_y0="0.1", start=["2  2  3", ".1  .25  .1", ".48  .97  1.38"],
         solver=["20", "0", "1.E-7", "1", ".2", ".02"]),
    dict(name="Ex2", model="Modified Lorentzian", data="Ex2.150", seed=202,
         note="two peaks with absorptive and dispersive parts",
         hint="Simulated data: question 12 holds the dispersive part of each peak",
         x=(-10.0, 20.0 / 149, 150), xnorm=1, ynorm=10, noise=0.08, sep=" ",
         y0=0.5, true=[[4.0, 2.5], [2.0, 3.0], [-3.0, 4.0], [1.0, -0.8]],
         start_y0="0.4", start=["3.5  3", "2.5  2.5", "-2.8  3.7", "0.5  -0.5"]),
    dict(name="Ex3", model="Exponential", data="Ex3.120", seed=303, weighted=True,
         note="a decay with three time constants, weighted towards the tail",
         hint="Weighting (question 19) keeps the small values of the tail in the fit",
         x=(0.0, 0.5, 120), xnorm=10, ynorm=100, noise=0.01, sep="\t",
         y0=0.2, true=[[3.0, 2.0, 1.0], [-8.0, -1.5, -0.3]],
         start_y0="0.1", start=["2.5  2.5  1.2", "-10  -2  -0.4"]),
    dict(name="Ex4", model="Power", data="Ex4.80", seed=404,
         note="a polynomial of degree four",
         hint="Four powers of x; give question 5 a smaller number to fit fewer",
         x=(0.0, 0.5, 80), xnorm=40, ynorm=1000, noise=0.01, sep=",",
         y0=0.05, true=[[1.2, -3.0, 2.5, 0.4]],
         start_y0="0", start=["1  1  1  1"]),
    dict(name="Ex5", model="Sine", data="Ex5.200", seed=505,
         note="two sine waves on an offset",
         hint="Sine fits need good starting frequencies in question 10",
         x=(0.0, 0.1, 200), xnorm=10, ynorm=1, noise=0.1, sep="\t",
         y0=0.3, true=[[1.5, 0.6], [1.2, 4.5], [0.4, 1.1]],
         start_y0="0", start=["1  1", "1.25  4.4", "0  1"],
         solver=["20", "5", "2000", "1.e-6", ".001", ".02"]),
    dict(name="Ex6", model="Sine * Exponential", data="Ex6.250", seed=606,
         note="two damped oscillations",
         hint="Each term is a sine wave that dies away; try starts of your own",
         x=(0.0, 0.1, 250), xnorm=10, ynorm=10, noise=0.02, sep=" ",
         y0=0.1, true=[[2.0, 1.0], [0.8, 2.6], [0.0, 0.8], [-0.6, -0.2]],
         start_y0="0", start=["1.5  1.5", "0.85  2.5", "0.2  0.5", "-0.5  -0.5"]),
    dict(name="Ex7", model="Bell Curve", data="Ex7.160", seed=707,
         note="three bell-shaped bands of a spectrum",
         hint="Bell curves have no offset, so question 8 is not asked",
         x=(400.0, 2.0, 160), xnorm=100, ynorm=1000, noise=0.01, sep="\t",
         y0=None, true=[[4.6, 5.5, 6.3], [0.8, 1.2, 0.5], [0.15, 0.25, 0.2]],
         start_y0="", start=["4.55  5.6  6.25", "1  1  1", ".2  .2  .2"]),
]


def term(model, i, q, u):
    """Term i (1-based) of a model at u from its parameters q, in question order."""
    if model == "Lorentzian":
        a, w, t0 = q
        return a / (1 + (2 * (u - t0) / w) ** 2)
    if model == "Modified Lorentzian":
        a, w, t0, b = q
        s = 2 * (u - t0) / w
        return (a + b * s) / (1 + s * s)
    if model == "Exponential":
        a, b = q
        return a * math.exp(b * u)
    if model == "Power":
        return q[0] * u ** i
    if model == "Sine":
        a, b, c = q
        return a * math.sin(2 * math.pi * b * u + c)
    if model == "Sine * Exponential":
        a, b, c, d = q
        return a * math.sin(2 * math.pi * b * u + c) * math.exp(d * u)
    if model == "Bell Curve":
        t0, a, b = q
        return a * math.exp(-(((u - t0) / b) ** 2) / 2)
    raise ValueError(model)


def model_value(demo, u):
    terms = len(demo["true"][0])
    v = demo["y0"] or 0.0
    for i in range(terms):
        v += term(demo["model"], i + 1, [g[i] for g in demo["true"]], u)
    return v


def data_text(demo):
    rng = random.Random(demo["seed"])
    x0, step, count = demo["x"]
    sep = demo["sep"]
    lines = ["Demo data for %s.Fit: %s" % (demo["name"], demo["note"]),
             "X%sY" % (sep if sep != " " else "  ")]
    for k in range(count):
        x = x0 + step * k
        y = demo["ynorm"] * (model_value(demo, x / demo["xnorm"]) + rng.gauss(0.0, demo["noise"]))
        lines.append("%.6f%s%.6f" % (x, sep, y))
    return "\r\n".join(lines) + "\r\n"


def response_json(demo):
    answers = [demo["data"], demo["model"], "3", str(demo["x"][2]),
               str(len(demo["true"][0])), str(demo["xnorm"]), str(demo["ynorm"]),
               demo["start_y0"]] + demo["start"]
    answers += [""] * (12 - len(answers))
    return {
        "Answers": answers,
        "WeightFlag": 1 if demo.get("weighted") else 0,
        "Note1": "Demo: " + demo["note"],
        "Note2": demo["hint"],
        "SolverValues": demo.get("solver", [""] * 6),
    }


def main():
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    cli = sys.argv[1]
    here = os.path.dirname(os.path.abspath(__file__))
    out = sys.argv[2] if len(sys.argv) == 3 else os.path.join(here, "..", "..", "dist", "demos")
    os.makedirs(out, exist_ok=True)
    for demo in DEMOS:
        with open(os.path.join(out, demo["data"]), "w", newline="") as f:
            f.write(data_text(demo))
        subprocess.run([cli, "write", os.path.join(out, demo["name"] + ".Fit")],
                       input=json.dumps(response_json(demo)), text=True, check=True)


if __name__ == "__main__":
    main()
