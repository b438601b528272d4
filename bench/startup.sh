#!/usr/bin/env bash
# startup.sh WIN_DIR WORK_DIR [RUNS] [IDLE_SECONDS]
# Run inside tools/with-wine.sh (`make bench` does). The monitor's start-up and idle cost
# against the least tray program (bench/startup/FloorTray.cpp), in the same prefix and
# the same run:
#   - launch to main window: the probe starts each program RUNS times, alternately, and
#     times the first visible window (median and minimum);
#   - the same for the second floor (bench/startup/FloorControls.cpp): the monitor's
#     DLLs, manifest and child windows with none of its work, the least the window the
#     design calls for can cost;
#   - working set two seconds after the window (median);
#   - CPU over IDLE_SECONDS in the tray: started with "Min", the background engine up and
#     no job due, measured from the Linux side over all the process's threads;
#   - the start-up trace of one more monitor start (QV_STARTUP_TIMES).
# The monitor runs from a copy of the program folder with the demo data (its jobs lie
# tomorrow and later), so nothing of the build tree changes.
set -euo pipefail
usage="usage: startup.sh WIN_DIR WORK_DIR [RUNS] [IDLE_SECONDS]"
win=$(cd "${1:?$usage}" && pwd)
work=$(realpath -m "${2:?$usage}")
runs=${3:-9}
idle=${4:-60}
here=$(cd "$(dirname "$0")" && pwd)
probe="$win/bench/startup/bench_startup_probe.exe"
for f in "$win/stage/QVMonitor.exe" "$probe" "$win/bench/startup/bench_floor_tray.exe" \
  "$win/bench/startup/bench_floor_controls.exe"; do
  [ -f "$f" ] || { echo "startup: $f is not built (make windows)" >&2; exit 1; }
done

rm -rf "$work"
mkdir -p "$work/floor"
cp -r "$win/stage" "$work/stage"
cp "$win/bench/startup/bench_floor_tray.exe" "$win/bench/startup/bench_floor_controls.exe" \
  "$work/floor/"
QV_DEMO_RUN_NOW=0 "$here/../tools/make-demo-root.sh" "$work/stage" >/dev/null
monitor="$work/stage/QVMonitor.exe"
floor="$work/floor/bench_floor_tray.exe"
controls="$work/floor/bench_floor_controls.exe"
winpath() { echo "Z:${1//\//\\}"; }

# The engine runs through the whole measurement, as it does on a user's machine.
(cd "$work/stage" && exec "$QV_WINE" "$work/stage/QVBackground_955.exe" </dev/null >/dev/null 2>&1) &
for _ in $(seq 100); do pgrep -f 'QVBackground_955\.exe' >/dev/null && break; sleep 0.1; done

window() {   # window EXE -> "ms kb"
  local out
  out=$("$QV_WINE" "$probe" window "$(winpath "$1")" 2>/dev/null | tr -d '\r')
  sed -n 's/^window_ms=\([0-9.]*\) working_set_kb=\([0-9]*\)$/\1 \2/p' <<<"$out"
}

stats() {   # stats VALUE... -> "median min"
  printf '%s\n' "$@" | sort -g | awk '{ v[NR] = $1 } END {
    m = (NR % 2) ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2; printf "%.1f %.1f\n", m, v[1] }'
}

echo "startup: $runs launches of each (after one each to warm the caches)"
window "$monitor" >/dev/null
window "$floor" >/dev/null
window "$controls" >/dev/null
mon_ms=(); mon_kb=(); floor_ms=(); floor_kb=(); ctl_ms=(); ctl_kb=()
for i in $(seq "$runs"); do
  read -r ms kb < <(window "$monitor")
  mon_ms+=("$ms"); mon_kb+=("$kb")
  read -r ms kb < <(window "$floor")
  floor_ms+=("$ms"); floor_kb+=("$kb")
  read -r ms kb < <(window "$controls")
  ctl_ms+=("$ms"); ctl_kb+=("$kb")
done
echo "  monitor  window ms: ${mon_ms[*]}"
echo "  floor    window ms: ${floor_ms[*]}"
echo "  controls window ms: ${ctl_ms[*]}"
read -r mon_med mon_min < <(stats "${mon_ms[@]}")
read -r floor_med floor_min < <(stats "${floor_ms[@]}")
read -r mon_ws _ < <(stats "${mon_kb[@]}")
read -r floor_ws _ < <(stats "${floor_kb[@]}")
read -r ctl_med ctl_min < <(stats "${ctl_ms[@]}")
read -r ctl_ws _ < <(stats "${ctl_kb[@]}")

# CPU time of a process's threads in nanoseconds, from the scheduler's own count.
cpu_ns() {
  local pid=$1 total=0 t
  [ -n "$pid" ] || { echo 0; return; }
  for t in /proc/"$pid"/task/*/schedstat; do
    total=$((total + $(cut -d' ' -f1 "$t" 2>/dev/null || echo 0)))
  done
  echo "$total"
}
server_pid() { pgrep -f "/wineserver" | head -1 || true; }

idle_cpu() {   # idle_cpu EXE PATTERN -> "program_ms wineserver_ms"
  local exe=$1 pattern=$2 pid server a b sa sb
  (cd "$(dirname "$exe")" && exec "$QV_WINE" "$exe" Min </dev/null >/dev/null 2>&1) &
  for _ in $(seq 100); do pid=$(pgrep -f "$pattern" | head -1 || true); [ -n "$pid" ] && break; sleep 0.1; done
  [ -n "$pid" ] || { echo "startup: $exe did not start" >&2; echo "0 0"; return; }
  sleep 15   # past the start and the first tick
  server=$(server_pid)
  a=$(cpu_ns "$pid"); sa=$(cpu_ns "$server")
  sleep "$idle"
  b=$(cpu_ns "$pid"); sb=$(cpu_ns "$server")
  kill "$pid" 2>/dev/null || true
  wait 2>/dev/null || true
  echo "$(( (b - a) / 1000000 )) $(( (sb - sa) / 1000000 ))"
}
echo "startup: ${idle} s idle in the tray, each program alone"
read -r mon_cpu mon_server < <(idle_cpu "$monitor" 'QVMonitor\.exe')
read -r floor_cpu floor_server < <(idle_cpu "$floor" 'bench_floor_tray\.exe')

# One more start with the start-up trace.
times="$work/startup-times.txt"
QV_STARTUP_TIMES="$(winpath "$times")" window "$monitor" >/dev/null || true

ratio() { awk -v a="$1" -v b="$2" 'BEGIN { if (b > 0) printf "%.2fx", a / b; else printf "-" }'; }
pct() { awk -v ms="$1" -v s="$idle" 'BEGIN { printf "%.3f %%", 100 * ms / (s * 1000) }'; }
echo
printf '%-36s %12s %12s %8s\n' "" "monitor" "floor" "ratio"
printf '%-36s %12s %12s %8s\n' "launch to window, median (ms)" "$mon_med" "$floor_med" "$(ratio "$mon_med" "$floor_med")"
printf '%-36s %12s %12s %8s\n' "launch to window, minimum (ms)" "$mon_min" "$floor_min" "$(ratio "$mon_min" "$floor_min")"
printf '%-36s %12s %12s %8s\n' "working set after start (MB)" \
  "$(awk -v k="$mon_ws" 'BEGIN { printf "%.1f", k / 1024 }')" \
  "$(awk -v k="$floor_ws" 'BEGIN { printf "%.1f", k / 1024 }')" "$(ratio "$mon_ws" "$floor_ws")"
printf '%-36s %12s %12s %8s\n' "second floor: its window, median (ms)" "$mon_med" "$ctl_med" "$(ratio "$mon_med" "$ctl_med")"
printf '%-36s %12s %12s %8s\n' "  its floor ratio, median" "$(ratio "$ctl_med" "$floor_med")" "" ""
printf '%-36s %12s %12s %8s\n' "  its working set (MB)" "" \
  "$(awk -v k="$ctl_ws" 'BEGIN { printf "%.1f", k / 1024 }')" "$(ratio "$mon_ws" "$ctl_ws")"
printf '%-36s %12s %12s %8s\n' "CPU over ${idle} s in the tray (ms)" "$mon_cpu" "$floor_cpu" "$(ratio "$mon_cpu" "$floor_cpu")"
printf '%-36s %12s %12s %8s\n' "  as a share of one core" "$(pct "$mon_cpu")" "$(pct "$floor_cpu")" ""
printf '%-36s %12s %12s %8s\n' "  wineserver meanwhile (ms)" "$mon_server" "$floor_server" ""
if [ -s "$times" ]; then
  echo
  echo "start-up trace (ms since the process started):"
  iconv -f UTF-16 -t UTF-8 "$times" 2>/dev/null | tr -d '\r' | sed 's/^/  /' || cat "$times"
fi
