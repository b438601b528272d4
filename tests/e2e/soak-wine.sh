#!/usr/bin/env bash
# soak-wine.sh REPO STAGE_DIR PROBE_EXE WORK_DIR MINUTES SAMPLE_SECONDS CYCLE_SECONDS
#
# A long run of the staged QVMonitor.exe beside the simulated engine, inside
# tools/with-wine.sh (a prefix of its own: the monitor's single-instance mutex and its
# COM class are per prefix, so the run does not meet other tests' monitors).
#
# Every CYCLE_SECONDS a job is started with qvjobs.exe (run-now) and the engine sends
# its progress calls as fast as it makes them, ends the job with a notice, and one
# more thing happens in turn during the transfer: the screens opened and closed from the
# tray menu, the tray re-created (TaskbarCreated), a dial-up request, the missed-backup
# keys, the engine killed (the monitor's tick starts it again), the schedule edited by
# qvjobs.exe. In the second cycle the monitor itself is killed and started again, and
# opens every screen right away: the process measured meets them in its warm-up.
#
# Every SAMPLE_SECONDS the monitor is sampled from outside (qvsoakprobe.exe and the
# Linux side of its process). At the end the figures and the slope per hour of each,
# over the low point of each job cycle after the warm-up, go to WORK_DIR/soak-wine.md;
# exit 1 when a slope is over its limit or the run itself went wrong.
set -euo pipefail
usage="usage: soak-wine.sh REPO STAGE_DIR PROBE_EXE WORK_DIR MINUTES SAMPLE_SECONDS CYCLE_SECONDS"
repo=${1:?$usage}
stage=${2:?$usage}
probe=${3:?$usage}
work=${4:?$usage}
minutes=${5:?$usage}
sampleEvery=${6:?$usage}
cycle=${7:?$usage}
wine=${QV_WINE:?run inside tools/with-wine.sh}
prefix=${WINEPREFIX:?run inside tools/with-wine.sh}

repo=$(cd "$repo" && pwd)
stage=$(cd "$stage" && pwd)
rm -rf "$work"
mkdir -p "$work"
work=$(cd "$work" && pwd)
folder="$work/program"
common="$folder/QVCOMMON"
samples="$work/samples.txt"
events="$work/events.txt"
mkdir -p "$folder"
(cd "$stage" && tar cf - --exclude=QVCOMMON .) | (cd "$folder" && tar xf -)
cp "$probe" "$work/qvsoakprobe.exe"

say() { echo "soak-wine: $*"; }
event() { printf '%s %s\n' "$(($(date +%s) - started))" "$*" >>"$events"; }
probe() { "$wine" "$work/qvsoakprobe.exe" "$@" </dev/null 2>>"$work/probe.err" | tr -d '\r'; }
qvjobs() { (cd "$folder" && "$wine" "$folder/qvjobs.exe" "$@" </dev/null 2>&1 | tr -d '\r'); }

# The Linux process of a Windows program of this prefix (other prefixes on the machine
# run programs of the same name).
linuxPid() {
  local pid
  for pid in $(pgrep -f "$1" 2>/dev/null); do
    if { tr '\0' '\n' <"/proc/$pid/environ"; } 2>/dev/null | grep -qxF "WINEPREFIX=$prefix"; then
      echo "$pid"
      return 0
    fi
  done
  return 1
}

# A killed server stays registered in the prefix's COM service and is handed to the
# engine's next call, which cannot reach it: the service starts again before a monitor.
restartComService() {
  "$wine" net stop RpcSs >/dev/null 2>&1 </dev/null || true
  "$wine" net start RpcSs >/dev/null 2>&1 </dev/null || true
}

trace="$common/SerTraceFile.txt"
monitorUp() {
  [ -f "$trace" ] && iconv -f UTF-16 -t UTF-8 "$trace" 2>/dev/null \
    | grep -Eq '^(Show|Hide)FromTaskBar called from the Monitor\.'
}
startMonitor() {
  rm -f "$trace"
  (cd "$folder" && exec "$wine" "$folder/QVMonitor.exe" Min </dev/null >/dev/null 2>&1) &
  local i
  for i in $(seq 600); do
    monitorUp && return 0
    sleep 0.1
  done
  say "the monitor did not start within 60 s"
  return 1
}
startEngineIfDown() {
  linuxPid 'QVBackground_955\.exe' >/dev/null && return 0
  (cd "$folder" && exec "$wine" "$folder/QVBackground_955.exe" </dev/null >/dev/null 2>&1) &
  event "engine started by the soak"
}

writeUtf16() {   # writeUtf16 FILE LINE...
  local file=$1
  shift
  { printf '\xff\xfe'; printf '%s\r\n' "$@" | iconv -f UTF-8 -t UTF-16LE; } >"$file.tmp"
  mv -f "$file.tmp" "$file"
}

stateWord() { iconv -f UTF-16 -t UTF-8 "$common/scheduleData.txt" 2>/dev/null | head -1 | tr -d '\r\357\273\277'; }

# The demo data: three jobs, an account, the background engine. The engine's scenario:
# no pause between calls ("as fast as it makes them"), enough calls for a transfer of
# a good part of the cycle.
# The engine makes about 80 calls a second here: a transfer takes about half the cycle.
# The calls go through IDispatch::Invoke: Wine's stub of the typed call (the vtable) keeps
# the four by-reference strings of every call, also in a bare server without any of the
# monitor (tools/wine/com-echo), which would hide what the monitor keeps itself.
# QV_SOAK_VIA=vtable makes the typed calls.
"$repo/tools/make-demo-root.sh" "$folder" --reset >/dev/null
printf '%s\r\n' "# the long run: progress calls back to back" "poll_ms = 500" \
  "files = ${QV_SOAK_FILES:-12}" "file_size = 25000000" \
  "steps = ${QV_SOAK_STEPS:-$((cycle * 10 / 3))}" \
  "step_ms = ${QV_SOAK_STEP_MS:-0}" "step_seconds = 2" \
  "via = ${QV_SOAK_VIA:-dispatch}" >"$folder/engine-sim.ini"

missedBackupKeys() {
  writeUtf16 "$common/qvwin.ini" "[Corvane]" "UserName=demo.user" "DisableAllSchdulers=0" \
    "NotifyUsers=demo.user"
  mkdir -p "$common/demo.user"
  writeUtf16 "$common/demo.user/qvwinserver.ini" "[Corvane]" "NoofDays=1" "Notify_Err=1" \
    "DateFailed=$(date -d '-5 days' '+%m/%d/%Y')" "Notifymsg=Backup failed"
}
dialUpRequest() {
  printf 'Documents\r\nSession1_Documents.txt\r\n' >"$common/DialupDisconnect.txt.tmp"
  mv -f "$common/DialupDisconnect.txt.tmp" "$common/DialupDisconnect.txt"
}

# Tray menu items that open a screen: Backup Now, Update Password, Manage all the
# Scheduled Jobs, Send Error Report, View log.
screens=(3 4 5 9 10)
# Every screen, one after the other: the first opening of each loads its code and
# pictures, which must fall in the warm-up rather than among the low points.
openScreens() {
  local item out
  for item in "${screens[@]}"; do
    out=$(probe screen "$item") || fail "screen $item: $out"
    event "screen: $out"
  done
}

started=$(date +%s)
end=$((started + minutes * 60))
failures=0
fail() { say "FAIL: $*"; event "FAIL: $*"; failures=$((failures + 1)); }
: >"$samples"
: >"$events"

cleanup() {
  [ -n "${sampler:-}" ] && kill "$sampler" 2>/dev/null || true
  probe kill QVMonitor.exe >/dev/null || true
  probe kill QVBackground_955.exe >/dev/null || true
}
trap cleanup EXIT

restartComService
startMonitor || exit 1
event "monitor started"
sleep 2
startEngineIfDown

# The sampler: seconds since the start, the job cycle, then what the probe reads
# (pid, working set KB, private KB, handles, GDI, USER, threads), the Linux side of
# the same process (resident KB, anonymous resident KB, threads), and the state word
# ("0" between transfers).
cycleFile="$work/cycle"
echo 0 >"$cycleFile"
(
  while :; do
    line=$(probe monitor || echo none)
    lpid=$(linuxPid 'QVMonitor\.exe' || true)
    linux="- - -"
    if [ -n "$lpid" ] && [ -r "/proc/$lpid/status" ]; then
      linux=$(awk '/^VmRSS:/{r=$2} /^RssAnon:/{a=$2} /^Threads:/{t=$2} END{print r, a, t}' \
        "/proc/$lpid/status")
    fi
    word=$(stateWord)
    echo "$(($(date +%s) - started)) $(cat "$cycleFile") $line $linux ${word:-?}" >>"$samples"
    sleep "$sampleEvery"
  done
) &
sampler=$!

n=0
while [ "$(date +%s)" -lt $((end - cycle / 3)) ]; do
  n=$((n + 1))
  echo "$n" >"$cycleFile"
  cycleStart=$(date +%s)
  # An engine killed inside a job leaves its immediate record on the list, which a
  # new run-now refuses; the user's way out is to delete it.
  if ! out=$(qvjobs run-now 1); then
    if grep -q 'already on the list' <<<"$out"; then
      qvjobs delete 0 >/dev/null || true
      event "cycle $n: the immediate record a killed engine left deleted"
      out=$(qvjobs run-now 1) || fail "qvjobs run-now 1 refused: $out"
    else
      fail "qvjobs run-now 1 refused: $out"
    fi
  fi
  event "cycle $n: qvjobs run-now 1"
  # Let the transfer get going, then one more thing while it runs.
  sleep 5
  # QV_SOAK_EVENTS=0 leaves the rest out: jobs alone, to tell what grows with what.
  case $(( ${QV_SOAK_EVENTS:-1} ? n % 6 : -1 )) in
    0) event "TaskbarCreated"; probe taskbar >/dev/null || fail "TaskbarCreated not sent" ;;
    1) openScreens ;;
    2) if [ $n -eq 2 ]; then
         event "monitor killed"
         probe kill QVMonitor.exe >/dev/null
         restartComService
         startMonitor || { fail "the monitor did not start again"; break; }
         event "monitor started again"
         # The process started again is the one measured: it opens its screens for the
         # first time here, in its warm-up, as the first process did in the first cycle.
         openScreens
       else
         dialUpRequest; event "dial-up request"
       fi ;;
    3) missedBackupKeys; event "missed-backup keys" ;;
    4) event "engine killed"; probe kill QVBackground_955.exe >/dev/null ;;
    5) out=$(qvjobs edit 2 --time "$(date -d '+2 hours' '+%-H:%M:%S')" --daily) \
         || fail "qvjobs edit 2: $out"
       event "qvjobs edit 2" ;;
  esac
  # Wait for the end of the job (the word back to "0"), then close the notices.
  while [ "$(date +%s)" -lt $((cycleStart + cycle - 5)) ]; do
    sleep 2
    [ "$(stateWord)" = 0 ] && [ ! -e "$common/qvwincurjobname.txt" ] && break
  done
  [ "$(stateWord)" = 0 ] || event "cycle $n: the job still runs at the cycle's end"
  sleep 12   # the notice comes with the next tick
  out=$(probe close) || fail "the notices did not close: $out"
  linuxPid 'QVMonitor\.exe' >/dev/null || fail "cycle $n: the monitor is gone"
  # The monitor's tick starts an engine that is down; after a kill, make sure.
  sleep 2
  startEngineIfDown
  while [ "$(date +%s)" -lt $((cycleStart + cycle)) ]; do sleep 1; done
done
echo "$n" >"$cycleFile"
kill "$sampler" 2>/dev/null || true
wait "$sampler" 2>/dev/null || true
sampler=

jobs=$(grep -c ' ended files=' "$common/engine-sim.log" 2>/dev/null || true)
calls=$(grep -c '^sent ' "$common/engine-sim.log" 2>/dev/null || true)
say "$n cycles, $jobs jobs ended, $calls progress calls sent"
[ "${jobs:-0}" -ge $((n / 2)) ] || fail "only ${jobs:-0} of $n jobs ended"

python3 "$repo/tests/e2e/soak-wine-report.py" "$samples" "$events" "$work/soak-wine.md" \
  "$minutes" "$sampleEvery" "$cycle" "${calls:-0}" || failures=$((failures + 1))
cat "$work/soak-wine.md"
[ $failures -eq 0 ] && say "passed"
exit $((failures > 0))
