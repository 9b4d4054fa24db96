#!/usr/bin/env bash
# Runs a Windows program of the build under Wine on a virtual X display of its own.
#
#   scripts/winerun.sh PROGRAM.exe [ARGS...]   run one program (CTest's emulator)
#   scripts/winerun.sh --stop [BUILD_DIR]      end every display and Wine server of the build
#
# Every program that runs at the same time as another gets a desktop of its own, so that
# focus, activation, the foreground window, the cursor and the clipboard are never shared.
# The build folder (the one holding CMakeCache.txt above the program) keeps, below wine-run/:
#   template/          a Wine prefix made and configured once
#   slot-N/prefix      a copy of the template for slot N, with its own wineserver
#   slot-N/xvfb.*      the slot's Xvfb display
#   slot-N/lock        held by the program that runs in the slot
# A run takes the first slot whose lock is free; with CTest running J jobs at once there
# are never more than J slots in use. Displays and servers stay up between runs, so each
# start is short. KEL_USE_DISPLAY=1 runs on the caller's $DISPLAY instead (the gallery on
# a real screen).
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

pid_alive() {
  # A dead process that nobody reaped still answers kill -0; look at its state too.
  local pid st
  [ -f "$1" ] || return 1
  pid=$(cat "$1")
  st=$(ps -o stat= -p "$pid" 2>/dev/null) || return 1
  case "$st" in Z*|"") return 1 ;; esac
  return 0
}

# Ends the wineserver of a prefix (and with it the prefix's Wine processes).
stop_server() {
  [ -d "$1/prefix" ] || return 0
  WINEPREFIX="$1/prefix" wineserver -k >/dev/null 2>&1 || true
  rm -f "$1/server.pid"
}

stop_xvfb() {
  if [ -f "$1/xvfb.pid" ]; then
    kill "$(cat "$1/xvfb.pid")" >/dev/null 2>&1 || true
    rm -f "$1/xvfb.pid" "$1/xvfb.display"
  fi
}

stop_all() {
  local state="$1/wine-run" slot
  for slot in "$state"/slot-*; do
    [ -d "$slot" ] || continue
    stop_server "$slot"
    stop_xvfb "$slot"
  done
  # A build made before slots existed kept one prefix and display directly here.
  stop_server "$state"
  stop_xvfb "$state"
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

export WINEARCH=win64
export WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"

# Starts Xvfb on the first free display number for the slot folder given. The choice of the
# number is made under a lock shared by all slots, so two slots never pick the same one.
start_xvfb() {
  local dir="$1" n i
  (
    flock 8
    for n in $(seq 91 190); do
      if [ ! -e "/tmp/.X11-unix/X$n" ] && [ ! -e "/tmp/.X$n-lock" ]; then
        setsid Xvfb ":$n" -screen 0 1600x1200x24 -nolisten tcp </dev/null >"$dir/xvfb.log" 2>&1 8>&- 9>&- &
        echo $! >"$dir/xvfb.pid"
        for i in $(seq 1 200); do
          [ -e "/tmp/.X11-unix/X$n" ] && break
          sleep 0.05
        done
        echo ":$n" >"$dir/xvfb.display"
        exit 0
      fi
    done
    echo "winerun: no free X display" >&2
    exit 1
  ) 8>"$state/display.lock"
}

# Makes the template prefix once: a fresh prefix, configured for windows without a window
# manager, with no crash debugger, and with the symbol font that caption buttons are drawn
# with. Slots copy it.
make_template() {
  local tpl="$state/template" log="$state/template.log" xdir="$state/template-x"
  rm -rf "$tpl" "$xdir"
  mkdir -p "$xdir"
  start_xvfb "$xdir" || return 1
  (
    export WINEPREFIX="$tpl" DISPLAY="$(cat "$xdir/xvfb.display")"
    wineboot -i </dev/null >"$log" 2>&1 8>&- 9>&-
    # No window manager runs on the virtual display: Wine manages and frames its windows
    # itself, so captions and borders appear in pictures of the windows and a window closes
    # at once instead of waiting for a manager that never answers.
    wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /t REG_SZ /d N /f </dev/null >>"$log" 2>&1 8>&- 9>&-
    wine reg add 'HKCU\Software\Wine\X11 Driver' /v Decorated /t REG_SZ /d N /f </dev/null >>"$log" 2>&1 8>&- 9>&-
    # A program that crashes ends at once with its exception code instead of waiting for a
    # debugger that nobody attends.
    wine reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\AeDebug' /v Auto /t REG_SZ /d 1 /f \
      </dev/null >>"$log" 2>&1 8>&- 9>&-
    wine reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\AeDebug' /v Debugger /t REG_SZ \
      /d 'cmd /c exit' /f </dev/null >>"$log" 2>&1 8>&- 9>&-
    wineserver -w </dev/null >/dev/null 2>&1 8>&- 9>&-
  )
  local rc=$?
  stop_xvfb "$xdir"
  rm -rf "$xdir"
  [ $rc -eq 0 ] && [ -f "$tpl/system.reg" ] || { echo "winerun: making the Wine prefix failed, see $log" >&2; return 1; }
  # Caption buttons (close, minimise, maximise) are glyphs of this font.
  local marlett
  for marlett in /usr/share/wine/fonts/marlett.ttf /usr/share/fonts/truetype/wine/marlett.ttf; do
    [ -f "$marlett" ] && { cp "$marlett" "$tpl/drive_c/windows/Fonts/"; break; }
  done
  touch "$tpl/.ready"
}

( flock 8; [ -f "$state/template/.ready" ] || make_template ) 8>"$state/template.lock" || exit 1

# Takes the first free slot; its lock stays held on descriptor 9 until this script ends, and
# no program started below inherits it.
n=0
while :; do
  slot="$state/slot-$n"
  mkdir -p "$slot"
  exec 9>"$slot/lock"
  flock -n 9 && break
  exec 9>&-
  n=$((n + 1))
done

export WINEPREFIX="$slot/prefix"
if [ ! -f "$slot/prefix/.ready" ] || [ "$state/template/.ready" -nt "$slot/prefix/.ready" ]; then
  stop_server "$slot"
  rm -rf "$slot/prefix" "$slot/prefix.new"
  cp -a "$state/template" "$slot/prefix.new" && mv "$slot/prefix.new" "$slot/prefix" || exit 1
  touch "$slot/prefix/.ready"
fi

if [ "${KEL_USE_DISPLAY:-0}" = "1" ]; then
  :
elif pid_alive "$slot/xvfb.pid" && [ -f "$slot/xvfb.display" ]; then
  export DISPLAY="$(cat "$slot/xvfb.display")"
else
  start_xvfb "$slot" || exit 1
  export DISPLAY="$(cat "$slot/xvfb.display")"
fi

if ! pid_alive "$slot/server.pid"; then
  # End any server that we did not start: a server that wine starts by itself inherits the
  # program's output and would hold the caller's pipe open long after the program ended.
  wineserver -k </dev/null >/dev/null 2>&1 9>&-
  wineserver -w </dev/null >/dev/null 2>&1 9>&-
  # The slot's own server, kept for a while after the last program so that each start is short.
  setsid wineserver -f -p600 </dev/null >/dev/null 2>&1 9>&- &
  echo $! >"$slot/server.pid"
fi

# Wine's helper processes (the desktop, device services) start with the program's standard
# handles and outlive it; were those the caller's pipe, the caller would wait for them. So
# the program writes to a file, which is copied out as it grows: what a program printed is
# there even when it is killed for taking too long.
out=$(mktemp "$slot/out.XXXXXX")
wine "$prog" "$@" >"$out" 2>&1 9>&- &
wpid=$!
tail -n +1 -s 0.05 --pid=$wpid -f "$out" 9>&- &
tpid=$!
# Stopped from outside (a test's time is up): the program goes too, not only this script.
trap 'kill $wpid $tpid 2>/dev/null; rm -f "$out"; exit 143' TERM INT HUP
wait $wpid
rc=$?
wait $tpid
rm -f "$out"
exit $rc
