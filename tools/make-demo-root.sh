#!/usr/bin/env bash
# make-demo-root.sh PROGRAM_FOLDER [--reset]
#
# Puts a small demo data set into PROGRAM_FOLDER\QVCOMMON (the data root is the
# program folder here): three scheduled jobs, an account name, the engine type, a
# few lines of activity log and the session file of the backup they tell of, so that `make run` shows a monitor with something in it.
#
# A file that already exists is left alone: what the monitor wrote there (the stored
# window place, a changed schedule) and what a person edited survives the next run.
# --reset writes every demo file again. Dates are taken relative to the day the file
# is written, so the jobs lie in the future then.
set -euo pipefail
root=${1:?usage: make-demo-root.sh PROGRAM_FOLDER [--reset]}
reset=${2:-}
common="$root/QVCOMMON"
mkdir -p "$common"

user="demo.user"
sep=$'\b\b'   # the field separator of the schedule file: two U+0008

# The product's text files are UTF-16 LE with a byte-order mark and CR LF. The text
# goes in through a temporary file, so a reader never sees half of one.
writeUtf16() {   # writeUtf16 FILE LINE...
  local file=$1
  shift
  if [ -e "$file" ] && [ "$reset" != "--reset" ]; then
    echo "make-demo-root: kept $file"
    return
  fi
  {
    printf '\xff\xfe'
    printf '%s\r\n' "$@" | iconv -f UTF-8 -t UTF-16LE
  } >"$file.tmp"
  mv -f "$file.tmp" "$file"
  echo "make-demo-root: wrote $file"
}

# One line of scheduleData.txt, fields in the order they stand in the file.
record() {   # record NO SET NEXT_EPOCH FREQ MAIL MAILMODE DAYS
  local no=$1 set=$2 next=$3 freq=$4 mail=$5 mailMode=$6 days=$7
  local nextRun sortKey createdOn
  nextRun=$(date -d "@$next" '+%m-%d-%Y %-H:%M:%S')
  sortKey=$(date -d "@$next" '+%Y%m%d%H%M')
  createdOn=$(date '+%m-%d-%Y %-H:%M:%S')
  local fields=(
    "$no" "$set" "$nextRun" "$createdOn" "My Corvane/" "$freq" 2 1 "$mail"
    "" "" "" 0 1 "$mailMode" "$sortKey" "$user" 1 0 "$days")
  local line="" i
  for i in "${!fields[@]}"; do
    [ "$i" -gt 0 ] && line+=$sep
    line+=${fields[$i]}
  done
  printf '%s' "$line"
}

# Sunday first, as the schedule's day digits count.
dayDigit() { echo $(($(date -d "@$1" +%u) % 7 + 1)); }

daily=$(date -d "tomorrow 06:41" +%s)
weekly=$(date -d "next saturday 22:00" +%s)
weekday=$(date -d "tomorrow 12:30" +%s)
while [ "$(date -d "@$weekday" +%u)" -gt 5 ]; do weekday=$((weekday + 86400)); done

writeUtf16 "$common/scheduleData.txt" \
  "0" \
  "$(record 1 "Documents" "$daily" 3 "" 0 1234567)" \
  "$(record 2 "Photos" "$weekly" 4 "demo.user@example.com" 3 "$(dayDigit "$weekly")")" \
  "$(record 3 "Mail Archive" "$weekday" 6 "demo.user@example.com" 2 23456)"

writeUtf16 "$common/qvwin.ini" \
  "[Corvane]" \
  "UserName=$user" \
  "DisableAllSchdulers=0"

# The demo engine is the background program (QVBackground_955.exe), not the service.
writeUtf16 "$common/QVDetails.ini" \
  "[Corvane]" \
  "Type=exe"

stamp() { date -d "$1" '+%m/%d/%Y %H:%M:%S'; }
writeUtf16 "$common/QVWServiceLog.txt" \
  "Information : $(stamp '-3 hours') : Corvane for Windows engine started." \
  "Information : $(stamp '-2 hours') : Backup job 'Documents' started." \
  "Information : $(stamp '-2 hours +4 minutes') : 214 files (38.6 MB) selected for backup." \
  "Success     : $(stamp '-2 hours +11 minutes') : Backup job 'Documents' completed." \
  "Error       : $(stamp '-1 hours') : Could not reach the server" \
  "Information : $(stamp '-50 minutes') : Backup job 'Photos' will run again at its next scheduled time."

# The session file of the backup the log tells of (the engine writes one per run), so
# that the Session Log lists it and `qvjobs status` finds a recent backup.
mkdir -p "$common/Session"
sessionName() { date -d "$1" '+Schedule %m-%d-%Y  %H-%M-%S.txt'; }
if ! compgen -G "$common/Session/Schedule *.txt" >/dev/null || [ "$reset" = "--reset" ]; then
  rm -f "$common/Session/Schedule "*.txt
  writeUtf16 "$common/Session/$(sessionName '-2 hours')" \
    "Information : $(stamp '-2 hours') : Backup job 'Documents' started." \
    "Success     : $(stamp '-2 hours +11 minutes') : Backup job 'Documents' completed."
fi

# QV_DEMO_RUN_NOW=1: a "Desktop" backup to run at once (the immediate key), and a slow
# scenario for the simulated engine, so that the window shows a live transfer for a
# minute and a half. A job that a stopped run left behind is taken again; the state word
# goes back to "0" so that the engine starts it.
if [ "${QV_DEMO_RUN_NOW:-0}" = 1 ]; then
  schedule="$common/scheduleData.txt"
  lines=()
  while IFS= read -r l; do
    l=${l%$'\r'}
    l=${l#$'\xef\xbb\xbf'}
    case "$l" in 99$sep*) continue ;; esac
    lines+=("$l")
  done < <(iconv -f UTF-16 -t UTF-8 "$schedule")
  lines[0]="0"
  now=$(date +%s)
  job=$(record 99 "Desktop" "$now" 1 "" 0 "")
  job=${job/$(date -d "@$now" '+%Y%m%d%H%M')/000000010000}
  reset=--reset writeUtf16 "$schedule" "${lines[@]}" "$job"
  scenario="$root/engine-sim.ini"
  if [ ! -e "$scenario" ] || [ "$reset" = "--reset" ]; then
    printf '%s\r\n' "# make run: a slow backup, so that its progress can be watched" \
      "files = 6" "file_size = 18000000" "steps = 10" "step_ms = 1500" "step_seconds = 3" \
      >"$scenario"
    echo "make-demo-root: wrote $scenario"
  fi
fi
