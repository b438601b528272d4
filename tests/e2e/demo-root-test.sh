#!/usr/bin/env bash
# demo-root-test.sh REPO QVJOBS_EXE WORK_DIR
# The demo data of `make run` must be what the product reads: the schedule goes
# through the job store's own reader (qvjobs.exe, under Wine), and a second run of
# the script keeps what the monitor or a person changed.
set -euo pipefail
repo=${1:?usage: demo-root-test.sh REPO QVJOBS_EXE WORK_DIR}
qvjobs=${2:?}
work=${3:?}
wine=${QV_WINE:-/usr/lib/wine/wine64}
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }

rm -rf "$work"
mkdir -p "$work"
"$repo/tools/make-demo-root.sh" "$work" >/dev/null
common="$work/QVCOMMON"

for f in scheduleData.txt qvwin.ini QVDetails.ini QVWServiceLog.txt; do
  [ "$(head -c 2 "$common/$f" | xxd -p)" = "fffe" ] || fail "$f has no UTF-16 LE byte-order mark"
  [ "$(tail -c 4 "$common/$f" | xxd -p)" = "0d000a00" ] || fail "$f does not end in CR LF"
done

jobs() { "$wine" "$qvjobs" --root "Z:${work//\//\\}" "$@" 2>/dev/null </dev/null | tr -d '\r'; }
list=$(jobs list)
[ "$(jobs state)" = "0" ] || fail "state word is not 0"
[ "$(wc -l <<<"$list")" = 3 ] || fail "expected three jobs, the reader found: $list"
sets=$(cut -d'|' -f2 <<<"$list" | paste -sd,)
[ "$sets" = "Documents,Photos,Mail Archive" ] || fail "sets read as '$sets'"
while IFS='|' read -r no set next created freq key days user mailMode mail; do
  # The sort key is the next run as yyyymmddHHMM.
  expected=$(date -d "$(sed -E 's/^(..)-(..)-(....) (.*)$/\3-\1-\2 \4/' <<<"$next")" +%Y%m%d%H%M)
  [ "$key" = "$expected" ] || fail "job $no: sort key $key, next run $next"
  [ "$user" = "demo.user" ] || fail "job $no: user '$user'"
  [ -n "$days" ] || fail "job $no: no day rule"
  if [ "$freq" = 4 ]; then
    day=$(( $(date -d "$(sed -E 's/^(..)-(..)-(....) .*$/\3-\1-\2/' <<<"$next")" +%u) % 7 + 1 ))
    [ "$days" = "$day" ] || fail "weekly job $no runs on day $day, its rule says $days"
  fi
done <<<"$list"

# The demo machine is a healthy one for a monitoring check: the next job is the daily
# one, the backup the log tells of has its session file, and nothing is changed by asking.
before=$(cd "$work" && find . -printf '%p %s %T@\n' | sort | md5sum)
rc=0
"$wine" "$qvjobs" --root "Z:${work//\//\\}" status >"$work.status" 2>/dev/null </dev/null || rc=$?
first=$(head -1 "$work.status" | tr -d '\r')
[ "$rc" = 0 ] || fail "qvjobs status exited $rc: $first"
next=$(sed -n 's/^1|Documents|\([^|]*\)|.*/\1/p' <<<"$list")
[[ "$first" == "CORVANE OK - next job 'Documents' at $next | age=0d;;7" ||
  "$first" == "CORVANE OK - next job 'Documents' at $next | age=1d;;7" ]] ||
  fail "qvjobs status said: $first"
[ "$(cd "$work" && find . -printf '%p %s %T@\n' | sort | md5sum)" = "$before" ] ||
  fail "qvjobs status changed the demo data"
rm -f "$work.status"

# Kept on a second run, written afresh with --reset.
printf 'x' >>"$common/qvwin.ini"
before=$(md5sum <"$common/qvwin.ini")
"$repo/tools/make-demo-root.sh" "$work" >/dev/null
[ "$(md5sum <"$common/qvwin.ini")" = "$before" ] || fail "a second run overwrote a changed file"
"$repo/tools/make-demo-root.sh" "$work" --reset >/dev/null
[ "$(md5sum <"$common/qvwin.ini")" != "$before" ] || fail "--reset left the changed file"

[ $failures -eq 0 ] && echo "demo root: all checks passed"
exit $((failures > 0))
