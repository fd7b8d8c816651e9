#!/bin/sh
# Rebuilds the golden results from the expression class as it is now; run from the top folder.
set -e
out=$(mktemp -d)
g++ -std=c++20 -O2 -Isrc -Itests/expr/golden tools/expr-golden/generate.cpp src/expr/*.cpp src/env/errors.cpp src/env/text.cpp \
    -o "$out/generate"
"$out/generate" 3000 > tests/data/expr/formulas.golden
rm -r "$out"
