#!/usr/bin/env bash
# kill-test.sh REPO QVJOBS WORK_DIR [ROUNDS]
# qvjobs killed (SIGKILL) at random moments while it changes the schedule, on the demo
# data: after every kill the schedule file holds exactly the old bytes or exactly the
# bytes a finished command leaves, and the next start removes any temporary file the
# killed one left. Prints how many kills fell before, inside and after the write.
set -uo pipefail
repo=${1:?usage: kill-test.sh REPO QVJOBS WORK_DIR [ROUNDS]}
qvjobs=${2:?}
work=${3:?}
rounds=${4:-40}
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }

rm -rf "$work"
mkdir -p "$work/base"
"$repo/tools/make-demo-root.sh" "$work/base" >/dev/null
root="$work/root"
now=(--now "11-25-2026 8:00:00")
first=$("$qvjobs" --root "$work/base" list | head -1 | cut -d'|' -f1)
commands=("edit $first --time 9:30:00 --daily" "delete $first" "run-now $first" "set-state 2")

reset() { rm -rf "$root"; cp -a "$work/base" "$root"; }
schedule() { md5sum <"$root/QVCOMMON/scheduleData.txt" | cut -d' ' -f1; }
reset
old=$(schedule)
declare -A new
for command in "${commands[@]}"; do
  reset
  # shellcheck disable=SC2086
  "$qvjobs" --root "$root" --answer yes "${now[@]}" $command >/dev/null 2>&1 </dev/null
  new[$command]=$(schedule)
  [ "${new[$command]}" != "$old" ] || fail "$command changed nothing when left to finish"
done

before=0 inside=0 after=0
for ((i = 0; i < rounds; i++)); do
  command=${commands[$((i % ${#commands[@]}))]}
  reset
  # shellcheck disable=SC2086
  "$qvjobs" --root "$root" --answer yes "${now[@]}" $command >/dev/null 2>&1 </dev/null &
  pid=$!
  # From at once to a little after a usual run of the sanitized build.
  sleep "0.$(printf '%03d' $((RANDOM % 400)))"
  kill -9 "$pid" 2>/dev/null
  wait "$pid" 2>/dev/null
  got=$(schedule)
  left=$(find "$root" -name '*.qvtmp' | wc -l)
  if [ "$left" != 0 ]; then
    inside=$((inside + 1))
  elif [ "$got" = "$old" ]; then
    before=$((before + 1))
  else
    after=$((after + 1))
  fi
  [ "$got" = "$old" ] || [ "$got" = "${new[$command]}" ] ||
    fail "killed during '$command': the schedule is neither old nor new"
  "$qvjobs" --root "$root" list >/dev/null 2>&1 </dev/null
  [ -z "$(find "$root" -name '*.qvtmp')" ] || fail "the next start left a temporary file"
  [ "$(schedule)" = "$got" ] || fail "the next start changed the schedule"
done
echo "$rounds kills: $before before the write, $inside inside it (temporary file left), $after after"
[ "$failures" = 0 ] || exit 1
echo ok
