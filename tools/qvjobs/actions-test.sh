#!/usr/bin/env bash
# actions-test.sh QVJOBS WORK_DIR [WINE]
# The job list's actions through the qvjobs program itself (natively, or the .exe under
# Wine when WINE is given): what each prints, its exit code and what it leaves in the
# schedule file.
set -euo pipefail
qvjobs=${1:?usage: actions-test.sh QVJOBS WORK_DIR [WINE]}
work=${2:?}
wine=${3:-}
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }

rm -rf "$work"
mkdir -p "$work/QVCOMMON"
common="$work/QVCOMMON"
# UTF-16 LE with byte-order mark and CR LF, as the product writes its files.
write16() {
  local file=$1
  shift
  { printf '\xff\xfe'; printf '%s\r\n' "$@" | iconv -f UTF-8 -t UTF-16LE; } >"$file"
}
read16() { tail -c +3 "$1" | iconv -f UTF-16LE -t UTF-8 | tr -d '\r'; }
b=$'\b\b'
record() { # no name next key days
  echo "$1${b}$2${b}$3${b}03-18-2013 15:02:33${b}My Corvane/${b}3${b}2${b}1${b}${b}${b}${b}${b}0${b}1${b}3${b}$4${b}jsmith${b}1${b}0${b}$5"
}
write16 "$common/scheduleData.txt" "1" \
  "$(record 7 Pictures '01-02-2020 6:30:00' 000000000000 1234567)" \
  "$(record 9 Music '01-02-2099 6:30:00' 209901020630 1234567)"
write16 "$common/qvwin.ini" "[Corvane]" "UserName=jsmith"
write16 "$common/BacksetData.txt" "Documents${b:0:1}1" "QVExchBrick Mon${b:0:1}1"

out=""
code=0
# One run: its output (without CR) and its exit code.
run() {
  set +e
  if [ -n "$wine" ]; then
    "$wine" "$qvjobs" --root "Z:${work//\//\\}" "$@" >"$work/out.txt" 2>/dev/null </dev/null
  else
    "$qvjobs" --root "$work" "$@" >"$work/out.txt" 2>/dev/null </dev/null
  fi
  code=$?
  set -e
  out=$(tr -d '\r' <"$work/out.txt")
}
expect() { # code text
  [ "$code" = "$1" ] || fail "exit $code, expected $1 (output: $out)"
  [ "$out" = "$2" ] || fail "printed '$out', expected '$2'"
}

run jobs
expect 0 "Pictures|01-02-2020 6:30:00|Daily|In Progress|My Corvane/|000000000000|7|jsmith|Sunday,Monday,Tuesday,Wednesday,Thursday,Friday,Saturday
Music|01-02-2099 6:30:00|Daily||My Corvane/|209901020630|9|jsmith|Sunday,Monday,Tuesday,Wednesday,Thursday,Friday,Saturday
Scheduled backup (username : jsmith) for the Backup set : 'Pictures' is in progress."

run --answer no delete 9
expect 1 "Are you sure you want to delete the scheduled record?"
grep -q Music <(read16 "$common/scheduleData.txt") || fail "the answer no deleted the job"

run --os-major 5 backup-now "QVExchBrick Mon"
expect 1 "Download and install the 'Advanced Backup plug-in' for the SQL Server, Exchange Server, Brick level Backup and Oracle server Backups."

run frobnicate
[ "$code" = 2 ] || fail "a bad command exited with $code, not 2"

# The changing actions.
run run-now 9
expect 0 "A record has been added for immediate backup/restore.
This operation should commence within a few minutes.

Click the 'Refresh' button to get the updated status on this backup/restore job."
read16 "$common/scheduleData.txt" | grep -q "^0${b}Music${b}" || fail "no immediate record of Music"
run run-now 9
expect 1 "An immediate backup/ restore job is already on the list."
run stop
expect 0 "A scheduled job is in progress.
Do you want to stop the transfer? 
The scheduled job will stop shortly."
[ "$(read16 "$common/scheduleData.txt" | head -1)" = 2 ] || fail "stop did not write 2"
run backup-now Documents
expect 0 "You have successfully set up an immediate backup of your scheduled Backup set 'Documents'. You may check its status from the system tray."
run backup-now Documents
expect 1 "You have already set up an immediate backup job for this Backup set 'Documents'."

[ "$failures" = 0 ] && echo "qvjobs actions: all as expected"
exit "$failures"
