#!/bin/sh
# Builds the expression bench at -O2 in its own build folder and runs it: clsEquation beside
# muparser, with the ratios at the end. Arguments go to the bench (--benchmark_filter=...);
# QUILLET_BENCH_BUILD_DIR chooses the build folder.
set -e
root=$(cd "$(dirname "$0")/.." && pwd)
build=${QUILLET_BENCH_BUILD_DIR:-$root/build-expr-bench}

# muparser is the bench's yardstick only, never a dependency of the program.
if ! dpkg -s libmuparser-dev >/dev/null 2>&1; then
    sudo=$([ "$(id -u)" -eq 0 ] || echo sudo)
    $sudo apt-get update
    $sudo apt-get install -y --no-install-recommends libmuparser-dev
fi

cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS_RELEASE="-O2 -DNDEBUG" \
    -DQUILLET_BUILD_BENCH=ON -DQUILLET_BUILD_TESTS=OFF -DQUILLET_BUILD_UI=OFF -DQUILLET_BUILD_FITTING=OFF \
    -DQUILLET_BUILD_FUZZ=OFF >/dev/null
ninja -C "$build" -j1 expr_bench
"$build/bench/expr_bench" "$@"
