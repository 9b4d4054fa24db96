#!/usr/bin/env bash
# Builds everything for 64-bit Windows and runs the whole test suite under Wine.
#   scripts/test.sh [BUILD_DIR]     (default: build)
set -uo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$top/build}

"$top/scripts/setup.sh" || exit 1
cmake -S "$top" -B "$build" -DCMAKE_TOOLCHAIN_FILE="$top/cmake/mingw-x86_64.cmake" || exit 1
cmake --build "$build" -j "$(nproc)" || exit 1
cd "$build" || exit 1
ctest -j "$(nproc)" --output-on-failure
rc=$?
"$top/scripts/winerun.sh" --stop "$build"
exit $rc
