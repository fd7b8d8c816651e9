#!/usr/bin/env bash
# Installs what is missing, configures and builds Quillet into build/ (program folder build/Quillet).
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
"$root/scripts/install-deps.sh"
build="${QUILLET_BUILD_DIR:-$root/build}"
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo "$@"
cmake --build "$build" -j "${QUILLET_JOBS:-2}"
