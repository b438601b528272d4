#!/usr/bin/env bash
# demo-run-test.sh REPO STAGE_DIR WORK_DIR
# `make run` on a fresh machine: the progress class of the monitor has never been
# registered in this prefix (its keys are removed first), and the demo's backup that
# runs at once must still reach the monitor. The same script as `make run` starts the
# monitor and the engine from a copy of the program folder; the engine's log must show
# progress calls sent, and no failed connection.
set -euo pipefail
repo=${1:?usage: demo-run-test.sh REPO STAGE_DIR WORK_DIR}
stage=${2:?}
work=${3:?}
wine=${QV_WINE:?run inside tools/with-wine.sh}
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }

# Whatever a failed run left; the tests that start monitors in this prefix take turns, so
# none is theirs. Ended through the prefix itself: the tests with a prefix of their own
# (the installer's, the long run's) run monitors and engines of these names beside this
# one, and so may other people's runs on the machine.
stopAll() {
  "$wine" taskkill /F /IM QVMonitor.exe </dev/null >/dev/null 2>&1 || true
  "$wine" taskkill /F /IM QVBackground_955.exe </dev/null >/dev/null 2>&1 || true
  sleep 1
}
stopAll
trap stopAll EXIT
# A monitor ended the hard way by an earlier test stays registered as the class's
# server in the prefix's COM service until that service starts again.
"$wine" net stop RpcSs >/dev/null 2>&1 || true
"$wine" net start RpcSs >/dev/null 2>&1 || true

rm -rf "$work"
mkdir -p "$work"
(cd "$stage" && tar cf - --exclude=QVCOMMON .) | (cd "$work" && tar xf -)

# The registration an earlier run (or test) left, in both views.
clsid='{1984E5BD-394A-449B-A09A-6648BCB1AF6F}'
iid='{BC8E9D57-8867-4B16-893C-187BDF70108D}'
libid='{653BCEE0-0E83-4D03-8210-EA583DC816E1}'
for root in 'HKCU\Software\Classes' 'HKCR'; do
  for key in "CLSID\\$clsid" "Interface\\$iid" "TypeLib\\$libid" 'QVMonitor.IMonitor'; do
    "$wine" reg delete "$root\\$key" /f >/dev/null 2>&1 || true
  done
done
if "$wine" reg query "HKCR\\CLSID\\$clsid" >/dev/null 2>&1; then
  fail "the class registration could not be removed"
fi

QV_DEMO_RESET=1 QV_RUN_TRANSFER=1 \
  "$repo/tools/run-monitor.sh" "$work" "$work/run.png" 5 >"$work/run.log" 2>&1 || fail "run-monitor.sh failed: $(cat "$work/run.log")"

# The engine comes after the monitor serves its class (on a slow first start the
# engine's first call would otherwise come before it, and the whole job be lost).
monitorAt=$(grep -n 'QVMonitor.exe started' "$work/run.log" | head -1 | cut -d: -f1)
engineAt=$(grep -nE 'QVBackground_955.exe (started|runs)' "$work/run.log" | head -1 | cut -d: -f1)
if [ -z "$monitorAt" ] || [ -z "$engineAt" ] || [ "$engineAt" -lt "$monitorAt" ]; then
  fail "the engine was started before the monitor served its class: $(cat "$work/run.log")"
fi

log="$work/QVCOMMON/engine-sim.log"
if [ ! -f "$log" ]; then
  fail "the engine wrote no log: $(cat "$work/run.log")"
else
  grep -q 'hr=0x80040154' "$log" && fail "the engine found no monitor class: $(grep -m1 'hr=' "$log")"
  grep -q 'not sent (no monitor)' "$log" && fail "progress calls were not sent"
  grep -q '^sent ' "$log" || grep -q ' sent ' "$log" || fail "no progress call was sent: $(tail -5 "$log")"
fi
[ -f "$work/run.png" ] || fail "no screenshot"

[ $failures -eq 0 ] && echo "demo run: all checks passed"
exit $((failures > 0))
