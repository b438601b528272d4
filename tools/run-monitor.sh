#!/usr/bin/env bash
# run-monitor.sh STAGE_DIR SHOT.png [SECONDS]
# Run inside tools/with-wine.sh: starts the monitor from the program folder the way
# a user's logon does, saves a screenshot of the desktop once it has had time to
# draw, and waits for it to end (or stops it after SECONDS when that is not 0).
set -euo pipefail
stage=${1:?usage: run-monitor.sh STAGE_DIR SHOT.png [SECONDS]}
shot=${2:?usage: run-monitor.sh STAGE_DIR SHOT.png [SECONDS]}
seconds=${3:-0}
if [ ! -f "$stage/QVMonitor.exe" ]; then
  echo "run-monitor: $stage/QVMonitor.exe is not built yet (the app target stages it with qv_stage)" >&2
  exit 1
fi

here=$(cd "$(dirname "$0")" && pwd)
shot=$(realpath -m "$shot")
cd "$stage"
exe="$PWD/QVMonitor.exe"
"$QV_WINE" "$exe" </dev/null &
pid=$!
echo "run-monitor: QVMonitor.exe started on display $DISPLAY"
sleep 5
if kill -0 "$pid" 2>/dev/null; then
  "$here/screenshot.sh" "$shot"
  echo "run-monitor: screenshot in $shot"
fi
if [ "$seconds" -gt 0 ]; then
  for _ in $(seq "$seconds"); do
    kill -0 "$pid" 2>/dev/null || break
    sleep 1
  done
  if kill -0 "$pid" 2>/dev/null; then
    echo "run-monitor: stopping after ${seconds}s"
    exit 0   # with-wine.sh ends the prefix's processes
  fi
fi
wait "$pid"
