#!/usr/bin/env bash
# Builds the library, quillet-cli and the library's tests for Windows with mingw-w64 and runs
# the tests under Wine through CTest: one run of each test program, in a Wine prefix of the
# build folder's own, with one Wine server kept up for the whole suite.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
"$root/scripts/install-deps.sh"
build="${QUILLET_WIN_BUILD_DIR:-$root/build-win}"
jobs="${QUILLET_JOBS:-2}"
toolchain="$root/cmake/mingw-w64.cmake"
deps="$build/deps"

# GoogleTest for the target, from Debian's sources with the same toolchain; the JSON library
# is headers only and is used as Debian ships it.
if [ ! -f "$deps/lib/cmake/GTest/GTestConfig.cmake" ]; then
  cmake -S /usr/src/googletest -B "$build/googletest" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$toolchain" \
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$deps"
  cmake --build "$build/googletest" -j "$jobs" --target install
fi
if [ ! -f "$deps/share/cmake/nlohmann_json/nlohmann_jsonConfig.cmake" ]; then
  mkdir -p "$deps/include" "$deps/share/cmake"
  cp -r /usr/include/nlohmann "$deps/include/"
  cp -r /usr/share/cmake/nlohmann_json "$deps/share/cmake/"
fi

# quillet-cli comes without `fit` here (the solver's tests drive the Linux run script); no
# desktop program either. The
# Linux quillet-cli of scripts/test.sh, when it is there, writes the response file that the
# Windows one must match.
linux_cli="${QUILLET_BUILD_DIR:-$root/build}/Quillet/quillet-cli"
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCMAKE_FIND_ROOT_PATH="$deps" \
  -DCMAKE_BUILD_TYPE=RelWithDebInfo -DQUILLET_BUILD_UI=OFF -DQUILLET_BUILD_FITTING=OFF -DQUILLET_BUILD_FUZZ=OFF \
  -DQUILLET_LINUX_CLI="$([ -x "$linux_cli" ] && echo "$linux_cli")"
cmake --build "$build" -j "$jobs"

# Wine has no network here: it must never ask for Mono or Gecko.
export WINEPREFIX="$build/wine"
export WINEARCH=win64
export WINEDLLOVERRIDES="mscoree,mshtml="
export WINEDEBUG="${WINEDEBUG:--all}"
# The prefix is made for these tests alone: they may change its system-wide registry.
export QUILLET_SCRATCH_SYSTEM=1
wineserver=/usr/lib/wine/wineserver64
mkdir -p "$WINEPREFIX"
# One server for the whole suite; it and Wine's services must not hold CTest's output open.
"$wineserver" -p </dev/null >/dev/null 2>&1
trap '"$wineserver" -k 2>/dev/null || true' EXIT
if [ -f "$WINEPREFIX/system.reg" ]; then boot=(wineboot); else boot=(wineboot -i); fi
/usr/lib/wine/wine64 "${boot[@]}" </dev/null >/dev/null 2>&1

ctest --test-dir "$build" --output-on-failure -j "$jobs" --timeout 600
