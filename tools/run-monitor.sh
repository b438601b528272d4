#!/usr/bin/env bash
# run-monitor.sh STAGE_DIR SHOT.png [SECONDS] [ARGUMENT]
# Run inside tools/with-wine.sh: puts the demo data into the program folder (which is
# the data root), starts the monitor the way a user's logon does, then the engine when
# one is staged and the monitor has not started it, saves a screenshot once the
# monitor has shown itself, and waits for it to end (or stops it after SECONDS when
# that is not 0). ARGUMENT is the monitor's
# command-line word ("Min" starts it hidden in the tray).
set -euo pipefail
usage="usage: run-monitor.sh STAGE_DIR SHOT.png [SECONDS] [ARGUMENT]"
stage=${1:?$usage}
shot=${2:?$usage}
seconds=${3:-0}
argument=${4:-}
if [ ! -f "$stage/QVMonitor.exe" ]; then
  echo "run-monitor: $stage/QVMonitor.exe is not built yet (the app target stages it with qv_stage)" >&2
  exit 1
fi

here=$(cd "$(dirname "$0")" && pwd)
shot=$(realpath -m "$shot")
stage=$(cd "$stage" && pwd)
trace="$stage/QVCOMMON/SerTraceFile.txt"

# A backup that runs at once gives a live transfer to watch; QV_RUN_TRANSFER=0 leaves
# it out (the engine then waits for the demo jobs' times).
transfer=${QV_RUN_TRANSFER:-1}
[ -f "$stage/QVBackground_955.exe" ] || transfer=0
QV_DEMO_RUN_NOW=$transfer "$here/make-demo-root.sh" "$stage" ${QV_DEMO_RESET:+--reset}

# The engine beside the monitor. It is started after the monitor serves its progress
# class: an engine that takes the demo job before the class is there finds no monitor
# at its first call and sends nothing for the whole job, and only a Wine prefix that
# kept an earlier run's registration would hide that. The monitor's own start starts
# the background engine when it is down; this starts it only if the monitor did not.
# QV_RUN_ENGINE=0 leaves it out.
engineRunning() { pgrep -f 'QVBackground_955\.exe' >/dev/null 2>&1; }
startEngine() {
  local engine="$stage/QVBackground_955.exe"
  [ "${QV_RUN_ENGINE:-1}" = 1 ] || return 0
  if [ ! -f "$engine" ]; then
    echo "run-monitor: no engine staged ($engine); the monitor runs alone"
    return 0
  fi
  if engineRunning; then
    echo "run-monitor: QVBackground_955.exe runs (the monitor started it)"
    return 0
  fi
  (cd "$stage" && exec "$QV_WINE" "$engine" </dev/null >/dev/null 2>&1) &
  echo "run-monitor: QVBackground_955.exe started"
}

# The monitor writes one of these when its window is up, shown or hidden.
started() {
  [ -f "$trace" ] && iconv -f UTF-16 -t UTF-8 "$trace" 2>/dev/null \
    | grep -Eq '^(Show|Hide)FromTaskBar called from the Monitor\.'
}

# On a person's own display only the Wine desktop is pictured, not their whole screen.
screenshot() {
  local window=""
  if [ "${QV_USER_DISPLAY:-0}" = 1 ]; then
    window=$(xdotool search --name 'Wine desktop' 2>/dev/null | head -1 || true)
  fi
  if [ -n "$window" ]; then
    mkdir -p "$(dirname "$shot")"
    xwd -id "$window" -silent -display "$DISPLAY" | /usr/bin/convert-im6.q16 xwd:- "$shot"
  else
    "$here/screenshot.sh" "$shot"
  fi
}

cd "$stage"
rm -f "$trace"   # so that only this run's start-up line counts
if [ -n "$argument" ]; then
  "$QV_WINE" "$stage/QVMonitor.exe" "$argument" </dev/null &
else
  "$QV_WINE" "$stage/QVMonitor.exe" </dev/null &
fi
pid=$!
echo "run-monitor: QVMonitor.exe started on display $DISPLAY from $stage"
for _ in $(seq 300); do
  started && break
  kill -0 "$pid" 2>/dev/null || break
  sleep 0.1
done
if ! kill -0 "$pid" 2>/dev/null; then
  echo "run-monitor: QVMonitor.exe ended by itself (another monitor running, or no write permission?)" >&2
  wait "$pid" || true
  exit 1
fi
started || echo "run-monitor: no start-up line in $trace after 30 s; taking the picture anyway" >&2
# The monitor serves its class from here on: the engine may call it.
for _ in $(seq 30); do engineRunning && break; sleep 0.1; done
startEngine
# Let the window and the tray icon paint; with a transfer, let the monitor's tick
# (every 10 s) draw it first.
if [ "$transfer" = 1 ] && [ "$argument" != "Min" ]; then sleep 12; else sleep 2; fi
screenshot
echo "run-monitor: screenshot in $shot"

if [ "$seconds" -gt 0 ]; then
  for _ in $(seq "$seconds"); do
    kill -0 "$pid" 2>/dev/null || break
    sleep 1
  done
  if kill -0 "$pid" 2>/dev/null; then
    echo "run-monitor: stopping after ${seconds}s"
    exit 0   # with-wine.sh ends the prefix's processes
  fi
else
  echo "run-monitor: the tray icon's menu (right click) has Shutdown; Ctrl-C here ends it too"
fi
wait "$pid"
