#!/usr/bin/env bash
# with-wine.sh [--user-display] PREFIX_DIR [--] COMMAND...
#
# Runs COMMAND with a private headless X display and a ready Wine prefix:
# DISPLAY, WINEPREFIX, WINEDEBUG and QV_WINE (the loader) are exported to it.
# With --user-display and a DISPLAY already set (a person at a desktop), the Wine
# desktop opens there instead; QV_USER_DISPLAY=1 tells COMMAND so. Tests never ask
# for this: their windows and screenshots stay off the user's screen.
# The prefix is made once and reused; a change of its recipe below (kRecipe)
# rebuilds it. Xvfb and the prefix's wineserver are always ended on exit, also
# when COMMAND fails or the script is interrupted.
#
# The wineserver is made persistent because otherwise it exits with the last
# program and services die between commands; boot-time processes are started
# with stdio detached so ctest does not wait forever on pipes they inherited.
set -euo pipefail

# Wine's loader here (no preloader) sits at a fixed address, 0x7d000000, and the kernel
# puts its heap at a random place in the gigabyte after it. Now and then (about one start
# in a thousand) the heap covers 0x7ffe0000, where Wine maps the shared user data; the
# program then ends at once with "failed to map the shared user data", which
# WINEDEBUG=-all hides: a test that wrote nothing. Everything from here on runs with the
# address layout not randomised, and so the heap right after the loader.
if [ -z "${QV_WINE_FIXED_LAYOUT:-}" ]; then
  export QV_WINE_FIXED_LAYOUT=1
  exec setarch "$(uname -m)" --addr-no-randomize bash "$0" "$@"
fi

kRecipe="qv-prefix-4 win10 shell=1280x800 fonts audio-off no-crash-dialog"
WINE=/usr/lib/wine/wine64
WINESERVER=/usr/lib/wine/wineserver

userDisplay=0
if [ "${1:-}" = "--user-display" ]; then
  shift
  [ -n "${DISPLAY:-}" ] && userDisplay=1
fi
if [ $# -lt 2 ]; then
  echo "usage: $0 [--user-display] PREFIX_DIR [--] COMMAND..." >&2
  exit 2
fi
mkdir -p "$1"
prefix=$(cd "$1" && pwd)
shift
[ "${1:-}" = "--" ] && shift

export WINEPREFIX="$prefix"
export WINEDEBUG="${WINEDEBUG:--all}"
# No Mono/Gecko here and no way to fetch them: without this wineboot would stop
# at their install dialogs on the virtual display and wait forever.
export WINEDLLOVERRIDES="${WINEDLLOVERRIDES:-mscoree,mshtml=}"
export QV_WINE="$WINE"

log() { echo "with-wine: $*" >&2; }

# One user of a prefix at a time: a second run would share (and then kill) the
# first one's wineserver.
exec 9>"$prefix.lock"
if ! flock -w 600 9; then
  log "prefix $prefix is busy (another run holds $prefix.lock)"
  exit 1
fi

xvfbPid=""
displayFile=$(mktemp)
cleanup() {
  local rc=$?
  "$WINESERVER" -k >/dev/null 2>&1 || true
  "$WINESERVER" -w >/dev/null 2>&1 || true
  if [ -n "$xvfbPid" ]; then
    kill "$xvfbPid" 2>/dev/null || true
    wait "$xvfbPid" 2>/dev/null || true
  fi
  rm -f "$displayFile"
  exit $rc
}
trap cleanup EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

# A leftover server of a run that was killed would hold the old display.
"$WINESERVER" -k >/dev/null 2>&1 || true

export QV_USER_DISPLAY=$userDisplay
startXvfb() {
  # Xvfb picks a free display number itself, so parallel runs of several people
  # on one machine never collide.
  # -noreset: by default the server starts over whenever its last client leaves, and a
  # client that comes in the middle of that (the next check, Wine) is refused.
  Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp -ac -noreset 3>"$displayFile" \
    </dev/null >/dev/null 2>&1 &
  xvfbPid=$!
  for _ in $(seq 100); do
    [ -s "$displayFile" ] && break
    kill -0 "$xvfbPid" 2>/dev/null || { log "Xvfb did not start"; exit 1; }
    sleep 0.1
  done
  [ -s "$displayFile" ] || { log "Xvfb gave no display number"; exit 1; }
  export DISPLAY=":$(tr -d '[:space:]' <"$displayFile")"
  local answered=0
  for _ in $(seq 100); do
    xdpyinfo -display "$DISPLAY" >/dev/null 2>&1 && { answered=1; break; }
    sleep 0.1
  done
  [ "$answered" = 1 ] || { log "display $DISPLAY does not answer"; exit 1; }
}
if [ "$userDisplay" = 1 ]; then
  xdpyinfo -display "$DISPLAY" >/dev/null 2>&1 || { log "display $DISPLAY does not answer"; exit 1; }
  log "using the display $DISPLAY"
else
  startXvfb
fi

quiet() { "$@" </dev/null >/dev/null 2>&1; }

makePrefix() {
  log "making Wine prefix $prefix (about 30 s)"
  find "$prefix" -mindepth 1 -delete 2>/dev/null || true
  quiet "$WINE" wineboot -i
  mkdir -p "$prefix/drive_c/windows/Fonts"
  cp /usr/share/wine/fonts/*.ttf "$prefix/drive_c/windows/Fonts/"
  local reg="$prefix/qv-setup.reg"
  cat >"$reg" <<'REG'
REGEDIT4

[HKEY_CURRENT_USER\Software\Wine\Explorer]
"Desktop"="shell"

[HKEY_CURRENT_USER\Software\Wine\Explorer\Desktops]
"shell"="1280x800"

[HKEY_CURRENT_USER\Software\Wine\Drivers]
"Audio"=""

[HKEY_CURRENT_USER\Software\Wine\WineDbg]
"ShowCrashDialog"=dword:00000000
REG
  quiet "$WINE" regedit /S "$(winepath_of "$reg")"
  quiet "$WINE" winecfg -v win10
  "$WINESERVER" -w
  verifyPrefix
  echo "$kRecipe" >"$prefix/.qv-recipe"
}

winepath_of() { echo "Z:${1//\//\\}"; }

# The tests and screenshots depend on these facts; a prefix that silently lacks
# one gives confusing failures much later, so say it here.
verifyPrefix() {
  local out
  out=$("$WINE" reg query 'HKCU\Software\Wine\Explorer' /v Desktop 2>/dev/null </dev/null | tr -d '\r')
  grep -q 'shell' <<<"$out" || { log "prefix check: virtual desktop not set"; return 1; }
  out=$("$WINE" cmd /c ver 2>/dev/null </dev/null | tr -d '\r')
  grep -q 'Windows 10\.' <<<"$out" || { log "prefix check: not Windows 10 ($out)"; return 1; }
  [ -f "$prefix/drive_c/windows/Fonts/tahoma.ttf" ] || { log "prefix check: fonts missing"; return 1; }
  # A crashing test program otherwise waits on the debugger's dialog on the headless
  # display until its ctest timeout; without the dialog it ends at once with a backtrace.
  out=$("$WINE" reg query 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog 2>/dev/null </dev/null | tr -d '\r')
  grep -q '0x0' <<<"$out" || { log "prefix check: crash dialog not turned off"; return 1; }
}

if [ "$(cat "$prefix/.qv-recipe" 2>/dev/null)" != "$kRecipe" ]; then
  makePrefix
fi

# The desktop's process (explorer.exe) ends a second after the last program on the
# desktop and is started again by the next one, with that program's standard error:
# a test whose output ctest reads then "runs" until the desktop ends, that is until
# its timeout while other tests keep the desktop busy. tools/wine/keep-desktop.cpp
# stays on the desktop for the whole run, its output detached.
keepDesktop() {
  local tools src exe ready
  tools="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
  src="$tools/wine/keep-desktop.cpp"
  exe="$prefix/qv-keep-desktop.exe"
  if [ ! -f "$exe" ] || [ "$src" -nt "$exe" ]; then
    # The product's handle holders (a header of src/) own what it opens.
    x86_64-w64-mingw32-g++-posix -std=c++20 -O2 -s -static -mwindows -I "$tools/../src" \
      -o "$exe.tmp" "$src" \
      || { log "could not build $src"; return 1; }
    mv "$exe.tmp" "$exe"
  fi
  ready="$prefix/.qv-desktop-ready"
  rm -f "$ready"
  "$WINE" "$exe" "$(winepath_of "$ready")" </dev/null >/dev/null 2>&1 &
  for _ in $(seq 100); do
    [ -f "$ready" ] && return 0
    sleep 0.1
  done
  log "keep-desktop did not start"
  return 1
}

# -p fails (exit 2) while an earlier server of this prefix is still lingering.
"$WINESERVER" -w
"$WINESERVER" -p
quiet "$WINE" wineboot
keepDesktop

"$@"
