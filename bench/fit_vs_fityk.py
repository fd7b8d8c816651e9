#!/usr/bin/env python3
"""Compares `quillet-cli fit` with Fityk's `cfityk` on the same data, in one run.

    fit_vs_fityk.py [--cli PATH] [--runs N] [--folder DIR]

Two cases, both with 2,000 noisy points from fixed seeds: a 3-term Lorentzian and a 3-term
exponential. Both programs start from the same values. For each case the script prints the
residual sum of squares and the median wall time of a whole run (process start, reading,
fitting, output) of each program, and the ratios quillet / fityk.

The runs take place in DIR (default: a fresh folder in /dev/shm when it exists), so the time
that quillet-cli spends flushing its three output files to a disk is left out; pass
--folder to measure on another file system. Needs cfityk (Debian package fityk).
"""
import argparse
import json
import math
import os
import random
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

HERE = os.path.dirname(os.path.abspath(__file__))

# Physical parameters of the data and the starting values, per term.
CASES = [
    dict(name="lorentz", model="Lorentzian", seed=2024, xnorm=10.0, ynorm=100.0, noise=2.0,
         x=(0.0, 0.05), y0=5.0, y0_start=3.0,
         # amplitude, full width at half maximum, centre
         true=[(100.0, 4.0, 25.0), (60.0, 8.0, 50.0), (80.0, 3.0, 70.0)],
         start=[(90.0, 5.0, 24.0), (70.0, 7.0, 51.5), (70.0, 3.5, 69.0)]),
    dict(name="exp", model="Exponential", seed=4048, xnorm=10.0, ynorm=100.0, noise=2.0,
         x=(0.0, 0.025), y0=10.0, y0_start=5.0,
         # amplitude, rate
         true=[(500.0, -1.25), (200.0, -0.2), (100.0, -0.05)],
         start=[(400.0, -1.0), (250.0, -0.25), (80.0, -0.04)]),
]
POINTS = 2000


def curve(case, x):
    y = case["y0"]
    for t in case["true"]:
        if case["model"] == "Lorentzian":
            a, w, c = t
            y += a / (1 + (2 * (x - c) / w) ** 2)
        else:
            a, b = t
            y += a * math.exp(b * x)
    return y


def write_data(case, path):
    rng = random.Random(case["seed"])
    x0, step = case["x"]
    with open(path, "w") as f:
        for k in range(POINTS):
            x = x0 + step * k
            f.write("%.6f\t%.6f\n" % (x, curve(case, x) + rng.gauss(0.0, case["noise"])))


def series_text(values):
    return "  ".join(repr(v) for v in values)


def write_response(cli, case, folder):
    xn, yn = case["xnorm"], case["ynorm"]
    start = case["start"]
    if case["model"] == "Lorentzian":
        series = [[a / yn for a, _, _ in start], [w / xn for _, w, _ in start], [c / xn for _, _, c in start]]
    else:
        series = [[a / yn for a, _ in start], [b * xn for _, b in start]]
    answers = [case["name"] + ".dat", case["model"], "1", str(POINTS), str(len(start)), repr(xn), repr(yn),
               repr(case["y0_start"] / yn)] + [series_text(s) for s in series]
    answers += [""] * (12 - len(answers))
    record = {"Answers": answers, "SolverValues": [""] * 6}
    subprocess.run([cli, "write", os.path.join(folder, case["name"] + ".Fit")], input=json.dumps(record),
                   text=True, check=True)


def write_fityk_script(case, folder):
    lines = ["set default_sigma = one", "@0 < '%s.dat'" % case["name"], "F += Constant(a=~%r)" % case["y0_start"]]
    if case["model"] == "Lorentzian":
        for a, w, c in case["start"]:
            lines.append("F += Lorentzian(height=~%r, center=~%r, hwhm=~%r)" % (a, c, w / 2))
    else:
        lines.append("define NExp(a, b) = a*exp(b*x)")
        for a, b in case["start"]:
            lines.append("F += NExp(a=~%r, b=~%r)" % (a, b))
    lines += ["fit", "lua print(string.format('ssr=%.17g', F:get_ssr(0)))"]
    path = os.path.join(folder, case["name"] + ".fityk")
    with open(path, "w") as f:
        f.write("\n".join(lines) + "\n")
    return path


def quillet_rss(folder, case):
    with open(os.path.join(folder, "output", case["name"] + ".plt")) as f:
        for line in f:
            if line.startswith("# rss: "):
                return float(line.split()[2])
    raise RuntimeError("no rss in the plot file")


def fityk_rss(output):
    for line in output.splitlines():
        if line.startswith("ssr="):
            return float(line[4:])
    raise RuntimeError("cfityk printed no SSR:\n" + output)


def timed(cmd, folder):
    t0 = time.perf_counter()
    r = subprocess.run(cmd, cwd=folder, capture_output=True, text=True)
    elapsed = time.perf_counter() - t0
    if r.returncode != 0:
        raise RuntimeError("%s failed (%d):\n%s%s" % (cmd[0], r.returncode, r.stdout, r.stderr))
    return elapsed, r.stdout


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--cli", default=os.path.join(HERE, "..", "build", "Quillet", "quillet-cli"))
    parser.add_argument("--runs", type=int, default=21)
    parser.add_argument("--folder")
    args = parser.parse_args()
    fityk = shutil.which("cfityk")
    if not fityk:
        sys.exit("cfityk is missing: install the Debian package fityk")
    cli = os.path.abspath(args.cli)
    base = args.folder or ("/dev/shm" if os.path.isdir("/dev/shm") else None)
    folder = tempfile.mkdtemp(prefix="quillet-bench-", dir=base)
    try:
        print("%-8s %18s %18s %14s %11s %11s %10s" % ("case", "quillet RSS", "fityk RSS", "RSS ratio - 1",
                                                    "quillet ms", "fityk ms", "time ratio"))
        for case in CASES:
            write_data(case, os.path.join(folder, case["name"] + ".dat"))
            write_response(cli, case, folder)
            script = write_fityk_script(case, folder)
            q_times, f_times, f_out = [], [], ""
            for _ in range(args.runs):  # interleaved, so both see the same machine load
                q_times.append(timed([cli, "fit", case["name"] + ".Fit"], folder)[0])
                elapsed, f_out = timed([fityk, "-I", "-n", "-q", script], folder)
                f_times.append(elapsed)
            q_rss, f_rss = quillet_rss(folder, case), fityk_rss(f_out)
            q_ms, f_ms = 1000 * statistics.median(q_times), 1000 * statistics.median(f_times)
            print("%-8s %18.12g %18.12g %14.2e %11.2f %11.2f %10.3f" % (case["name"], q_rss, f_rss, q_rss / f_rss - 1,
                                                                     q_ms, f_ms, q_ms / f_ms))
    finally:
        shutil.rmtree(folder, ignore_errors=True)


if __name__ == "__main__":
    main()
