#!/usr/bin/env bash
# Sets up everything on a fresh Debian 12 machine, builds and runs the whole test suite.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
"$root/scripts/build.sh"
export QT_QPA_PLATFORM=offscreen
ctest --test-dir "${QUILLET_BUILD_DIR:-$root/build}" --output-on-failure -j "${QUILLET_JOBS:-2}"
