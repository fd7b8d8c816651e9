#!/usr/bin/env bash
# Installs a built Quillet for the person who runs it:
#   - the program folder PREFIX/Quillet (the build's program folder, without its run output;
#     an existing User folder is kept);
#   - in the parent folder PREFIX, where the program looks one folder up from its own: the
#     MyEditor script, Morvane-flyer.pdf and donate.html (the build puts them in the build
#     folder, the parent of its program folder);
#   - a menu entry and icon for Quillet, and the file types .Fit, .Out and .MV opened by MyEditor.
# usage: scripts/install-desktop.sh [--build DIR] [--prefix DIR]   (default prefix: ~/Vantorel)
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="${QUILLET_BUILD_DIR:-$root/build}"
prefix="$HOME/Vantorel"
while [ $# -gt 0 ]; do
  case "$1" in
    --build) build=$2; shift 2 ;;
    --prefix) prefix=$2; shift 2 ;;
    -h | --help) sed -n '2,10p' "$0"; exit 0 ;;
    *) echo "install-desktop.sh: unknown argument '$1'" >&2; exit 2 ;;
  esac
done

built="$build/Quillet"
if [ ! -x "$built/quillet" ] || [ ! -f "$build/MyEditor" ]; then
  echo "install-desktop.sh: no built program in $built; run scripts/build.sh first." >&2
  exit 1
fi
# A run's command line is split at blanks, so the program folder may hold none.
if [[ "$prefix" =~ [^A-Za-z0-9._~+/-] ]]; then
  echo "install-desktop.sh: '$prefix' holds characters other than letters, digits and . _ - ~ + /;" \
       "choose another folder with --prefix." >&2
  exit 1
fi
prefix="$(mkdir -p "$prefix" && cd "$prefix" && pwd)"
program="$prefix/Quillet"

mkdir -p "$program/User"
(cd "$built" && tar -cf - --exclude=./User --exclude='./*/output' --exclude=./output .) | (cd "$program" && tar -xf -)
# The examples stay read-only, so that Save never overwrites one.
chmod a-w "$program"/demos/Ex*.Fit
install -m 0644 "$build/Morvane-flyer.pdf" "$build/donate.html" "$prefix/"
install -m 0755 "$build/MyEditor" "$prefix/MyEditor"

data="${XDG_DATA_HOME:-$HOME/.local/share}"
install -D -m 0644 "$root/dist/linux/quillet.svg" "$data/icons/hicolor/scalable/apps/quillet.svg"
install -D -m 0644 "$root/dist/linux/quillet-mime.xml" "$data/mime/packages/quillet.xml"
mkdir -p "$data/applications"
for entry in quillet quillet-editor; do
  sed -e "s|@PROGRAM@|$program|g" -e "s|@PARENT@|$prefix|g" "$root/dist/linux/$entry.desktop.in" \
    > "$data/applications/$entry.desktop"
done

# The desktop's caches; each tool is optional, the files above already hold everything.
command -v update-mime-database >/dev/null && update-mime-database "$data/mime" || true
command -v update-desktop-database >/dev/null && update-desktop-database "$data/applications" || true
command -v gtk-update-icon-cache >/dev/null && gtk-update-icon-cache -q -t "$data/icons/hicolor" || true
if command -v xdg-mime >/dev/null; then
  xdg-mime default quillet-editor.desktop application/x-quillet-fit application/x-quillet-out text/x-quillet-mv || true
fi

echo "Quillet is installed in $program."
echo "Start it from the menu, or with: $program/quillet"
