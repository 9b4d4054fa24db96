#!/usr/bin/env bash
# Builds the gallery and runs it: in a window when a display is there, otherwise it writes
# a PNG of every page to the folder given (default: shots/ in the source tree).
#   scripts/gallery.sh [SHOTS_DIR]
set -uo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
build=$top/build

"$top/scripts/setup.sh" || exit 1
cmake -S "$top" -B "$build" -DCMAKE_TOOLCHAIN_FILE="$top/cmake/mingw-x86_64.cmake" || exit 1
cmake --build "$build" -j "$(nproc)" --target KelGallery || exit 1

if [ -n "${DISPLAY:-}" ] && [ -z "${1:-}" ]; then
  KEL_USE_DISPLAY=1 "$top/scripts/winerun.sh" "$build/bin/KelGallery.exe"
  exit $?
fi
shots=$(mkdir -p "${1:-$top/shots}" && cd "${1:-$top/shots}" && pwd)
"$top/scripts/winerun.sh" "$build/bin/KelGallery.exe" --shots "$shots"
rc=$?
"$top/scripts/winerun.sh" --stop "$build"
[ $rc -eq 0 ] && echo "gallery: pictures of the pages are in $shots"
exit $rc
