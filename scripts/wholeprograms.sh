#!/usr/bin/env bash
# Runs every test program of a build once as a whole process, all its tests in one go, so
# that what only a whole run shows cannot hide behind CTest's one-suite entries: a crash at
# exit, state one suite leaves for another. Two programs run at a time, each on a desktop of
# its own; a program that fails has its output shown.
#   scripts/wholeprograms.sh [BUILD_DIR]     (default: build)
set -uo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "${1:-$top/build}" && pwd) || exit 1
logs="$build/whole-programs"
rm -rf "$logs"
mkdir -p "$logs"

run_one() {
  local exe="$1" name
  name=$(basename "$exe" .exe)
  timeout 900 "$top/scripts/winerun.sh" "$exe" >"$logs/$name.log" 2>&1
  echo $? >"$logs/$name.rc"
}

programs=("$build"/bin/test_*.exe)
[ -e "${programs[0]}" ] || { echo "wholeprograms: no test programs in $build/bin" >&2; exit 1; }
jobs_max=$(nproc)
for exe in "${programs[@]}"; do
  while [ "$(jobs -rp | wc -l)" -ge "$jobs_max" ]; do wait -n; done
  run_one "$exe" &
done
wait

failed=0
for exe in "${programs[@]}"; do
  name=$(basename "$exe" .exe)
  rc=$(cat "$logs/$name.rc" 2>/dev/null || echo 1)
  summary=$(grep -E '^\[  (PASSED|FAILED)  \] [0-9]+ tests?' "$logs/$name.log" | head -n 2 | tr '\n' ' ')
  if [ "$rc" = 0 ]; then
    echo "whole program $name: exit 0, $summary"
  else
    failed=$((failed + 1))
    echo "whole program $name: exit $rc, $summary"
    grep -E '^\[  CRASH   \]' "$logs/$name.log"
    echo "---- last lines of $name"
    tail -n 40 "$logs/$name.log"
    echo "----"
  fi
done
echo "whole programs: ${#programs[@]} run, $failed with a failure"
[ $failed -eq 0 ]
