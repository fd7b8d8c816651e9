#!/bin/sh
# Where clsEquation's re-solve time goes, per bench formula: perf samples of the library's math
# functions (libm), of the machine code made for the formula (code), of the interpreter's step
# dispatch (steps, for formulas that stay interpreted), and of the rest (the solve around them,
# the bench loop). Needs perf (apt-get install linux-perf) and a bench built by
# run-expr-bench.sh; names of formulas as arguments choose some of them.
set -e
root=$(cd "$(dirname "$0")/.." && pwd)
bench=${QUILLET_BENCH_BUILD_DIR:-$root/build-expr-bench}/bench/expr_bench
data=$(mktemp -d)
trap 'rm -rf "$data"' EXIT
names=${*:-$("$bench" --benchmark_list_tests | sed -n 's|^resolve/quillet/||p')}
printf '%-13s %6s %6s %6s %6s  %s\n' formula libm code steps rest "largest math functions"
for name in $names; do
    perf record -q -o "$data/perf.data" "$bench" --benchmark_filter="^resolve/quillet/$name\$" \
        --benchmark_repetitions=1 --benchmark_min_time=0.5 >/dev/null 2>&1
    perf report -i "$data/perf.data" --no-children --sort dso,symbol 2>/dev/null | awk -v name="$name" '
        /^#/ || NF < 4 { next }
        {
            share = $1; sub(/%/, "", share); share += 0; dso = $2; symbol = $4
            line = $0
            if (dso ~ /^libm/ || symbol ~ /_finite@plt|^(sin|cos|exp|log|pow|atan|tan|sincos)@plt/) {
                libm += share
                if (dso ~ /^libm/ && share >= 2) top = top sprintf(" %s %.0f%%", symbol, share)
            } else if (dso ~ /^\[JIT\]/) code += share
            else if (line ~ /Solve</) solve += share
            else rest += share
        }
        END { printf "%-13s %5.0f%% %5.0f%% %5.0f%% %5.0f%% %s\n", name, libm, code, solve, rest, top }'
done
