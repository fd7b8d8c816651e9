#!/usr/bin/env bash
# The build and an install lay out the same folders: the program looks one folder up from its
# own for the editor script and the documents of the View and Help menus, and the example
# response files are read-only while their folder takes the runs' output.
# usage: layout_test.sh SOURCE_DIR BUILD_DIR
set -euo pipefail
root=$1
build=$2
work=$(mktemp -d)
trap 'chmod -R u+w "$work"; rm -rf "$work"' EXIT

fail() { echo "FAILED: $*" >&2; exit 1; }
writable_by_mode() { (( (8#$(stat -c %a "$1") & 8#222) != 0 )); }

check() {
  local program=$1 parent
  parent=$(cd "$program/.." && pwd)
  for doc in Morvane-flyer.pdf donate.html; do
    [ -s "$parent/$doc" ] || fail "$parent/$doc is missing"
  done
  [ -x "$parent/MyEditor" ] || fail "$parent/MyEditor is missing or not executable"
  for doc in manual.pdf CurveFitting-Lorentzian-series.pdf Lorrentzian-series-vs-mod.-series.pdf Fit4user.mv; do
    [ -s "$program/$doc" ] || fail "$program/$doc is missing"
  done
  local examples=0
  for example in "$program"/demos/Ex*.Fit; do
    examples=$((examples + 1))
    ! writable_by_mode "$example" || fail "$example is writable"
  done
  [ "$examples" -eq 7 ] || fail "$program/demos holds $examples examples, not 7"
  writable_by_mode "$program/demos" || fail "$program/demos takes no run output"
}

check "$build/Quillet"
HOME="$work/home" XDG_DATA_HOME="$work/data" XDG_CONFIG_HOME="$work/config" \
  "$root/scripts/install-desktop.sh" --build "$build" --prefix "$work/Vantorel" >/dev/null
check "$work/Vantorel/Quillet"
# A second install over the first replaces the read-only examples.
HOME="$work/home" XDG_DATA_HOME="$work/data" XDG_CONFIG_HOME="$work/config" \
  "$root/scripts/install-desktop.sh" --build "$build" --prefix "$work/Vantorel" >/dev/null
check "$work/Vantorel/Quillet"
echo "build and install agree"
