#!/usr/bin/env bash
# Runs a Windows program of the build under Wine on a virtual X display.
#
#   scripts/winerun.sh PROGRAM.exe [ARGS...]   run one program (CTest's emulator)
#   scripts/winerun.sh --stop [BUILD_DIR]      end the display and the Wine server
#
# The Wine prefix lives in the build folder (the one holding CMakeCache.txt above the
# program), so a build never touches the user's own prefix. Xvfb and a persistent
# wineserver are started once per build folder and reused by every later run; a lock
# keeps parallel test runs from starting them twice. KEL_USE_DISPLAY=1 runs on the
# caller's $DISPLAY instead of the virtual one (the gallery on a real screen).
set -u

find_build_dir() {
  local d
  d=$(cd "$(dirname "$1")" 2>/dev/null && pwd) || return 1
  while [ "$d" != "/" ]; do
    [ -f "$d/CMakeCache.txt" ] && { echo "$d"; return 0; }
    d=$(dirname "$d")
  done
  return 1
}

stop_all() {
  local build="$1" state="$1/wine-run"
  if [ -d "$state/prefix" ]; then
    WINEPREFIX="$state/prefix" wineserver -k >/dev/null 2>&1 || true
  fi
  rm -f "$state/server.pid"
  if [ -f "$state/xvfb.pid" ]; then
    kill "$(cat "$state/xvfb.pid")" >/dev/null 2>&1 || true
    rm -f "$state/xvfb.pid" "$state/xvfb.display"
  fi
}

if [ "${1:-}" = "--stop" ]; then
  build=${2:-$(pwd)}
  stop_all "$(cd "$build" && pwd)"
  exit 0
fi

prog="$1"; shift
build=${KEL_BUILD_DIR:-$(find_build_dir "$prog")} || { echo "winerun: no build folder above $prog" >&2; exit 2; }
state="$build/wine-run"
mkdir -p "$state"

export WINEPREFIX="$state/prefix"
export WINEARCH=win64
export WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"

pid_alive() {
  # A dead process that nobody reaped still answers kill -0; look at its state too.
  local pid st
  [ -f "$1" ] || return 1
  pid=$(cat "$1")
  st=$(ps -o stat= -p "$pid" 2>/dev/null) || return 1
  case "$st" in Z*|"") return 1 ;; esac
  return 0
}

start_xvfb() {
  local n
  for n in $(seq 91 160); do
    if [ ! -e "/tmp/.X11-unix/X$n" ] && [ ! -e "/tmp/.X$n-lock" ]; then
      setsid Xvfb ":$n" -screen 0 1600x1200x24 -nolisten tcp </dev/null >"$state/xvfb.log" 2>&1 9>&- &
      echo $! >"$state/xvfb.pid"
      local i
      for i in $(seq 1 100); do
        [ -e "/tmp/.X11-unix/X$n" ] && break
        sleep 0.05
      done
      echo ":$n" >"$state/xvfb.display"
      return 0
    fi
  done
  echo "winerun: no free X display" >&2
  return 1
}

(
  flock 9
  if [ "${KEL_USE_DISPLAY:-0}" != "1" ] && ! pid_alive "$state/xvfb.pid"; then
    start_xvfb || exit 1
  fi
  if [ "${KEL_USE_DISPLAY:-0}" != "1" ]; then export DISPLAY="$(cat "$state/xvfb.display")"; fi
  if ! pid_alive "$state/server.pid"; then
    if [ ! -f "$WINEPREFIX/system.reg" ]; then
      wineboot -i </dev/null >"$state/wineboot.log" 2>&1 9>&-
    fi
    if [ ! -f "$state/prefix.configured" ]; then
      # No window manager runs on the virtual display: Wine manages and frames its windows
      # itself, so captions and borders appear in pictures of the windows and a window
      # closes at once instead of waiting for a manager that never answers.
      wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /t REG_SZ /d N /f \
        </dev/null >>"$state/wineboot.log" 2>&1 9>&-
      wine reg add 'HKCU\Software\Wine\X11 Driver' /v Decorated /t REG_SZ /d N /f \
        </dev/null >>"$state/wineboot.log" 2>&1 9>&-
      touch "$state/prefix.configured"
    fi
    # End any server that we did not start: a server that wine starts by itself inherits the
    # program's output and would hold the caller's pipe open long after the program ended.
    wineserver -k </dev/null >/dev/null 2>&1 9>&-
    wineserver -w </dev/null >/dev/null 2>&1 9>&-
    # Our own server, kept for a while after the last program so that each start is short.
    setsid wineserver -f -p600 </dev/null >/dev/null 2>&1 9>&- &
    echo $! >"$state/server.pid"
  fi
) 9>"$state/lock" || exit 1

if [ "${KEL_USE_DISPLAY:-0}" != "1" ]; then
  export DISPLAY="$(cat "$state/xvfb.display")"
fi
# Wine's helper processes (the desktop, device services) start with the program's standard
# handles and outlive it; were those the caller's pipe, the caller would wait for them. So
# the program writes to files that are copied out once it ends.
out=$(mktemp "$state/out.XXXXXX")
err=$(mktemp "$state/err.XXXXXX")
wine "$prog" "$@" >"$out" 2>"$err" 9>&-
rc=$?
cat "$out"
cat "$err" >&2
rm -f "$out" "$err"
exit $rc
