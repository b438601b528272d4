#!/usr/bin/env bash
# status-test.sh QVJOBS WORK_DIR [WINE]
# `qvjobs status` through the program itself (natively, or the .exe under Wine when WINE
# is given) on a data root built for each state and reason: the exit code, the first
# line, the JSON read back by a JSON parser with the values it must hold, and a digest
# of the whole data root (names, sizes, times, contents) that must not change.
set -euo pipefail
qvjobs=${1:?usage: status-test.sh QVJOBS WORK_DIR [WINE]}
work=${2:?}
wine=${3:-}
failures=0
fail() { echo "FAIL [$case]: $*"; failures=$((failures + 1)); }
case=setup
now="11-25-2026 19:30:00"

write16() {
  local file=$1
  shift
  { printf '\xff\xfe'; printf '%s\r\n' "$@" | iconv -f UTF-8 -t UTF-16LE; } >"$file"
}
b=$'\b\b'
record() { # no set next key
  echo "$1${b}$2${b}$3${b}11-01-2026 15:02:33${b}My Corvane/${b}3${b}2${b}1${b}${b}${b}${b}${b}0${b}1${b}0${b}$4${b}bob${b}1${b}0${b}1234567"
}

# A machine that is fine: two jobs, yesterday's scheduled backup, a quarter of the quota.
root=""
fresh() {
  case=$1
  root="$work/$1"
  rm -rf "$root"
  mkdir -p "$root/QVCOMMON/Session" "$root/QVCOMMON/bob"
  write16 "$root/QVCOMMON/scheduleData.txt" 0 \
    "$(record 1 Documents '11-26-2026 6:41:00' 202611260641)" \
    "$(record 2 Photos '11-28-2026 22:00:00' 202611282200)"
  settings "DESKNOTIFYICON=GREEN" "TotalSpace=1000M" "UsedSpace=250M"
  write16 "$root/QVCOMMON/QVDetails.ini" "[Corvane]" "Type=exe"
  write16 "$root/QVCOMMON/bob/qvwinserver.ini" "[Corvane]" "ACCTYPE=QVWIN"
  printf 'log' >"$root/QVCOMMON/Session/Schedule 11-24-2026  06-41-00.txt"
  printf 'log' >"$root/QVCOMMON/Session/Restore 11-25-2026  10-00-00.txt"
}
settings() { write16 "$root/QVCOMMON/qvwin.ini" "[Corvane]" "UserName=bob" "$@"; }
missed() { # Notifymsg
  settings "NotifyUsers=<<bob"
  write16 "$root/QVCOMMON/bob/qvwinserver.ini" "[Corvane]" "ACCTYPE=QVWIN" "Notify_Err=1" \
    "DateFailed=20261115" "Notifymsg=$1"
}

digest() {
  (cd "$root" && find . -printf '%p %y %s %T@ %m\n' | LC_ALL=C sort &&
    find . -type f -exec sha256sum {} + | LC_ALL=C sort) | sha256sum
}

out=""
code=0
run() {
  set +e
  if [ -n "$wine" ]; then
    "$wine" "$qvjobs" --root "Z:${root//\//\\}" --now "$now" "$@" >"$work/out.txt" 2>"$work/err.txt" </dev/null
  else
    "$qvjobs" --root "$root" --now "$now" "$@" >"$work/out.txt" 2>"$work/err.txt" </dev/null
  fi
  code=$?
  set -e
  out=$(tr -d '\r' <"$work/out.txt")
}

# check CODE FIRST_LINE PYTHON_CONDITION [STATUS ARGS...]: the text and the JSON form.
check() {
  local want=$1 first=$2 cond=$3
  shift 3
  local before
  before=$(digest)
  run status "$@"
  [ "$code" = "$want" ] || fail "exit $code, expected $want"
  [ "$(head -n1 <<<"$out")" = "$first" ] || fail "first line '$(head -n1 <<<"$out")', expected '$first'"
  if [ "$want" != 3 ]; then
    [ "$(wc -l <<<"$out")" = 10 ] || fail "expected ten lines, got: $out"
    [ ! -s "$work/err.txt" ] || fail "standard error: $(cat "$work/err.txt")"
  fi
  run status --json "$@"
  [ "$code" = "$want" ] || fail "--json exit $code, expected $want"
  python3 -c '
import json, sys
d = json.load(open(sys.argv[1], encoding="ascii"))
keys = ["status", "summary", "engine", "inProgress", "nextJob", "jobsHeld", "missed", "quota",
        "lastResult", "sessions"]
assert list(d) == keys, "keys %s" % list(d)
assert "CORVANE %s - %s" % (d["status"], d["summary"]) == sys.argv[2].split(" | ")[0], d["summary"]
assert eval(sys.argv[3]), "does not hold: " + sys.argv[3]
' "$work/out.txt" "$first" "$cond" ||
    fail "JSON (exit $code, $(wc -c <"$work/out.txt") bytes): $(cat "$work/out.txt"); standard error: $(cat "$work/err.txt")"
  [ "$(digest)" = "$before" ] || fail "the data root changed"
}

ok_tail=" | quota=25%;90;100;0;100 age=1d;;7"

fresh ok
check 0 "CORVANE OK - next job 'Documents' at 11-26-2026 6:41:00$ok_tail" \
  'd["nextJob"] == {"set": "Documents", "nextRun": "11-26-2026 6:41:00"} and d["engine"]["kind"] == "background" and d["quota"] == {"usedBytes": 262144000, "totalBytes": 1000000000, "percent": 25} and d["lastResult"] == "success" and d["sessions"] == {"count": 2, "newestBackup": {"start": "11-24-2026  06-41-00", "description": "Schedule"}, "ageDays": 1} and d["missed"] == [] and d["jobsHeld"] is False and d["inProgress"] is None'
[ -n "$wine" ] || grep -q '"running":null' "$work/out.txt" || fail "natively the engine's state is not null"

fresh held
settings "DisableAllSchdulers=1" "DESKNOTIFYICON=GREEN"
check 1 "CORVANE WARNING - all scheduled jobs are held | age=1d;;7" 'd["jobsHeld"] is True and d["quota"] is None'

fresh quota95
settings "TotalSpace=1000M" "UsedSpace=950M"
check 1 "CORVANE WARNING - quota 95% used | quota=95%;90;100;0;100 age=1d;;7" \
  'd["quota"]["percent"] == 95 and d["lastResult"] is None'

fresh red
settings "DESKNOTIFYICON=RED"
check 1 "CORVANE WARNING - the last job failed | age=1d;;7" 'd["lastResult"] == "failure"'

critical="CORVANE CRITICAL - no backup for 10 day(s) for the account 'bob'"
fresh missedbackup
missed MISSEDBACKUP
check 2 "$critical. | age=1d;;7" \
  'd["missed"][0]["reason"] == "MISSEDBACKUP" and d["missed"][0]["days"] == 10 and "computer is shut down" in d["missed"][0]["text"]'

fresh noschedulejob
missed NOSCHEDULEJOB
check 2 "$critical: You have not scheduled any backup jobs. | age=1d;;7" \
  'd["missed"][0]["text"].startswith("User:  '"'"'bob'"'"'.\r\n\r\nYou have not scheduled")'

fresh nosetdata
missed "NOBACUPSETDATA_Family pictures"
check 2 "$critical: There are no items found in the Backup set : 'Family pictures'. | age=1d;;7" \
  'd["missed"] == [{"user": "bob", "reason": "NOBACUPSETDATA_Family pictures", "days": 10, "text": "The scheduled backup has not taken place for the past 10 day(s) for the account '"'"'bob'"'"'.\r\n\r\nReason : There are no items found in the Backup set : '"'"'Family pictures'"'"'. Check the contents of the Backup set.\r\n\r\nFor assistance, email us at support@corvane.com or send the "}]'

fresh noreason
missed ""
check 2 "$critical. | age=1d;;7" 'd["missed"][0]["reason"] == "" and d["missed"][0]["text"].count("\r\n\r\n") == 1'

fresh otherword
missed "DISKFULL"
check 2 "$critical. | age=1d;;7" 'd["missed"][0]["reason"] == "DISKFULL" and d["missed"][0]["text"] is None'

fresh nojob
write16 "$root/QVCOMMON/scheduleData.txt" 0
check 2 "CORVANE CRITICAL - No scheduled backup/restore job(s)$ok_tail" 'd["nextJob"] is None'

fresh oldsession
rm "$root/QVCOMMON/Session/Schedule 11-24-2026  06-41-00.txt"
printf 'log' >"$root/QVCOMMON/Session/Backup 11-10-2026  08-00-00.txt"
check 2 "CORVANE CRITICAL - the newest backup session is 15 day(s) old (11-10-2026  08-00-00) | quota=25%;90;100;0;100 age=15d;;7" \
  'd["sessions"]["newestBackup"]["description"] == "Interactive Backup" and d["sessions"]["ageDays"] == 15'
check 0 "CORVANE OK - next job 'Documents' at 11-26-2026 6:41:00 | quota=25%;90;100;0;100 age=15d;;20" \
  'd["sessions"]["ageDays"] == 15' --max-age 20

fresh unreadable
rm "$root/QVCOMMON/scheduleData.txt"
mkdir "$root/QVCOMMON/scheduleData.txt"
if [ -n "$wine" ]; then place="Z:${root//\//\\}\\QVCOMMON\\scheduleData.txt"; else place="$root\\QVCOMMON\\scheduleData.txt"; fi
check 3 "CORVANE UNKNOWN - cannot read $place" 'd["engine"] is None and d["missed"] is None'

fresh badargument
check 3 "CORVANE UNKNOWN - bad argument: --max-age takes a whole number of days" \
  'd["sessions"] is None' --max-age soon

[ "$failures" = 0 ] && echo "qvjobs status: all as expected"
exit "$failures"
