#!/bin/sh
# Builds the expression bench at -O2 in its own build folder and runs it: clsEquation beside
# muparser, with the ratios at the end. Usage: bench/run-expr-bench.sh [BUILD_DIR] [bench options]
set -e
root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$root/build-expr-bench}
[ $# -gt 0 ] && shift

# muparser is the bench's yardstick only, never a dependency of the program.
if ! dpkg -s libmuparser-dev >/dev/null 2>&1; then
    if [ "$(id -u)" -eq 0 ]; then apt-get install -y --no-install-recommends libmuparser-dev
    else sudo apt-get install -y --no-install-recommends libmuparser-dev; fi
fi

cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS_RELEASE="-O2 -DNDEBUG" \
    -DQUILLET_BUILD_BENCH=ON -DQUILLET_BUILD_TESTS=OFF -DQUILLET_BUILD_UI=OFF -DQUILLET_BUILD_FITTING=OFF \
    -DQUILLET_BUILD_FUZZ=OFF >/dev/null
ninja -C "$build" -j2 expr_bench
"$build/bench/expr_bench" "$@"
