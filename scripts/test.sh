#!/usr/bin/env bash
# Sets up everything on a fresh Debian 12 machine, builds and runs the whole test suite: the
# Linux suite, then the library's tests built for Windows and run under Wine.
# QUILLET_LINUX_ONLY=1 skips the Windows part.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
"$root/scripts/build.sh"
export QT_QPA_PLATFORM=offscreen
ctest --test-dir "${QUILLET_BUILD_DIR:-$root/build}" --output-on-failure -j "${QUILLET_JOBS:-2}"
if [ "${QUILLET_LINUX_ONLY:-0}" != 1 ]; then
  "$root/scripts/test-windows.sh"
fi
