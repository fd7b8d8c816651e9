#!/usr/bin/env bash
# Sets up everything on a fresh Debian 12 machine, builds and starts Quillet.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
"$root/scripts/build.sh"
exec "${QUILLET_BUILD_DIR:-$root/build}/Quillet/quillet" "$@"
