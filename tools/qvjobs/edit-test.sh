#!/usr/bin/env bash
# edit-test.sh REPO QVJOBS WORK_DIR [wine]
# qvjobs edit as a script runs it, on the demo data of `make run`: the program itself
# (natively, or the Windows one under Wine with "wine"), its output, its exit codes
# and what the other jobs look like afterwards.
set -euo pipefail
repo=${1:?usage: edit-test.sh REPO QVJOBS WORK_DIR [wine]}
qvjobs=${2:?}
work=${3:?}
mode=${4:-native}
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }

rm -rf "$work"
mkdir -p "$work"
"$repo/tools/make-demo-root.sh" "$work" >/dev/null
if [ "$mode" = wine ]; then
  wine=${QV_WINE:-/usr/lib/wine/wine64}
  root="Z:${work//\//\\}"
  run() { "$wine" "$qvjobs" --root "$root" "$@" 2>/dev/null </dev/null | tr -d '\r'; return "${PIPESTATUS[0]}"; }
else
  run() { "$qvjobs" --root "$work" "$@" 2>/dev/null </dev/null; }
fi
now=(--now "11-25-2026 8:00:00")

before=$(run list)
others_before=$(grep -v '^2|' <<<"$before")

# The weekly job becomes hourly at 9:30: that job changes, the others stay as they were.
code=0; out=$(run "${now[@]}" edit 2 --time 9:30:00 --hourly) || code=$?
[ "$code" = 0 ] || fail "edit exited $code"
[ -z "$out" ] || fail "edit printed '$out'"
after=$(run list)
job2=$(grep '^2|' <<<"$after")
IFS='|' read -r _ _ next _ freq key days _ mailMode mail <<<"$job2"
[ "$next" = "11-25-2026 9:30:00" ] || fail "next run '$next'"
[ "$freq|$key|$days" = "0|202611250930|Hourly" ] || fail "frequency, key, days: $freq|$key|$days"
[ "$mailMode|$mail" = "3|demo.user@example.com" ] || fail "mail not kept: $mailMode|$mail"
[ "$(grep -v '^2|' <<<"$after")" = "$others_before" ] || fail "other jobs changed: $after"

# A malformed address: the message, exit 1, the file as it was.
code=0; out=$(run "${now[@]}" edit 1 --time 7:00:00 --daily --mail "me@.com" --notify always) || code=$?
[ "$code" = 1 ] || fail "bad mail exited $code"
[ "$out" = "Enter your valid email address." ] || fail "bad mail printed '$out'"
[ "$(run list)" = "$after" ] || fail "a refused edit changed the file"

# A bad argument is a usage error.
code=0; run edit 1 --hourly >/dev/null || code=$?
[ "$code" = 2 ] || fail "missing --time exited $code"

# No day left: the weekday job stays, as a daily one.
code=0; run "${now[@]}" edit 3 --time 12:30:00 --days "" >/dev/null || code=$?
[ "$code" = 0 ] || fail "--days '' exited $code"
job3=$(run list | grep '^3|')
IFS='|' read -r _ _ next _ freq key days _ <<<"$job3"
[ "$freq|$days|$next" = "3|1234567|11-25-2026 12:30:00" ] || fail "job 3 not daily: $job3"

# --none on the hourly job: it leaves the file.
code=0; run "${now[@]}" edit 2 --time 12:30:00 --none >/dev/null || code=$?
[ "$code" = 0 ] || fail "--none exited $code"
[ -z "$(run list | grep '^2|')" ] || fail "job 2 is still there"
[ "$(run list | wc -l)" = 2 ] || fail "expected two jobs left"

[ $failures -eq 0 ] && echo "qvjobs edit ($mode): all checks passed"
exit $((failures > 0))
