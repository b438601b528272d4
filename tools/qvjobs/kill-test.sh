#!/usr/bin/env bash
# kill-test.sh REPO QVJOBS WORK_DIR [wine]
# qvjobs stopped at each step of its write of the schedule (QV_WRITE_PAUSE) and killed
# there, for each changing command, on the demo data. Before the new content takes the
# original's place the schedule file must hold exactly the old bytes, from then on exactly
# the new ones; a temporary file is left only before the replace, and the next start
# removes it without touching the schedule. A kill half way through an append (the trace)
# leaves the schedule old or new as well. With "wine" the Windows program runs under Wine
# (killed through wineserver's process, which is TerminateProcess for the program).
set -uo pipefail
repo=${1:?usage: kill-test.sh REPO QVJOBS WORK_DIR [wine]}
qvjobs=${2:?}
work=${3:?}
mode=${4:-native}
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }

# A path as the program spells it.
native_path() {
  if [ "$mode" = wine ]; then echo "Z:${1//\//\\}"; else echo "$1"; fi
}
# qvjobs on the data root DIR; `start` runs it in place of the (background) shell, so
# that its process is the one killed.
run() { (start "$@"); }
start() {
  local dir=$1
  shift
  if [ "$mode" = wine ]; then
    exec "${QV_WINE:-/usr/lib/wine/wine64}" "$qvjobs" --root "$(native_path "$dir")" "$@"
  else
    exec "$qvjobs" --root "$dir" "$@"
  fi
}

rm -rf "$work"
mkdir -p "$work/base"
"$repo/tools/make-demo-root.sh" "$work/base" >/dev/null
root="$work/root"
now=(--now "11-25-2026 8:00:00")
first=$(run "$work/base" list 2>/dev/null </dev/null | head -1 | cut -d'|' -f1)
commands=("edit $first --time 9:30:00 --daily" "delete $first" "run-now $first" "set-state 2")

reset() { rm -rf "$root"; cp -a "$work/base" "$root"; }
schedule() { md5sum <"$root/QVCOMMON/scheduleData.txt" | cut -d' ' -f1; }
# The schedule as text, a copy kept by its digest: a wrong one is shown against the one
# expected, line by line.
keep() { [ -e "$work/kept-$1" ] || cp "$root/QVCOMMON/scheduleData.txt" "$work/kept-$1"; }
readable() { iconv -f UTF-16LE -t UTF-8 "$1" | tr '\b\r' '|\n' | grep -v '^$'; }
differs() {
  keep "$1"
  diff <(readable "$work/kept-$2") <(readable "$work/kept-$1") | sed 's/^/    /'
}
temporaries() { find "$root" -name '*.qvtmp' | wc -l; }
reset
old=$(schedule)
keep "$old"
declare -A new
for command in "${commands[@]}"; do
  reset
  # shellcheck disable=SC2086
  run "$root" --answer yes "${now[@]}" $command >/dev/null 2>&1 </dev/null
  new[$command]=$(schedule)
  keep "${new[$command]}"
  [ "${new[$command]}" != "$old" ] || fail "$command changed nothing when left to finish"
done

points=0
for command in "${commands[@]}"; do
  for step in written flushed replacing replaced appending; do
    reset
    marker="$work/paused"
    rm -f "$marker"
    # The bytes are written first to the temporary file beside the schedule; the trace
    # is appended to (set-state writes no trace line).
    file=scheduleData.txt
    [ "$step" = written ] && file=scheduleData.txt.qvtmp
    if [ "$step" = appending ]; then
      [ "$command" = "set-state 2" ] && continue
      file=SerTraceFile.txt
    fi
    # shellcheck disable=SC2086
    QV_WRITE_PAUSE="$step|$file|$(native_path "$marker")" \
      start "$root" --answer yes "${now[@]}" $command >/dev/null 2>&1 </dev/null &
    pid=$!
    for ((wait = 0; wait < 600; wait++)); do
      [ -e "$marker" ] && break
      kill -0 "$pid" 2>/dev/null || break
      sleep 0.05
    done
    if [ ! -e "$marker" ]; then
      fail "'$command' never reached the step $step"
      kill -9 "$pid" 2>/dev/null
      wait "$pid" 2>/dev/null
      continue
    fi
    kill -9 "$pid" 2>/dev/null
    wait "$pid" 2>/dev/null
    kill -0 "$pid" 2>/dev/null && fail "'$command' paused at $step outlived its kill"
    points=$((points + 1))
    got=$(schedule)
    left=$(temporaries)
    case $step in
      written | flushed | replacing)
        [ "$got" = "$old" ] ||
          fail "'$command' killed at $step: the schedule is not the old one:
$(differs "$got" "$old")"
        [ "$left" = 1 ] || fail "'$command' killed at $step: $left temporary files, expected 1"
        ;;
      replaced)
        [ "$got" = "${new[$command]}" ] ||
          fail "'$command' killed at $step: the schedule is not the new one:
$(differs "$got" "${new[$command]}")"
        [ "$left" = 0 ] || fail "'$command' killed at $step: a temporary file is left"
        ;;
      appending)
        [ "$got" = "$old" ] || [ "$got" = "${new[$command]}" ] ||
          fail "'$command' killed half way through an append: the schedule is neither old nor new"
        ;;
    esac
    run "$root" list >/dev/null 2>&1 </dev/null
    [ "$(temporaries)" = 0 ] || fail "the start after '$command' killed at $step left a temporary file"
    [ "$(schedule)" = "$got" ] || fail "the start after '$command' killed at $step changed the schedule"
    echo "killed '$command' at $step: the schedule is $([ "$got" = "$old" ] && echo old || echo new), $left temporary file(s) left"
  done
done
echo "$points failure points killed"
[ "$failures" = 0 ] || exit 1
echo ok
