#!/usr/bin/env bash
# full-disk-test.sh REPO QVJOBS WORK_DIR full|readonly [wine]
# qvjobs on a data root it cannot write to, on the demo data of `make run`:
#   full      a small tmpfs mounted as the data root and filled up;
#   readonly  a data root the user may read but not write (run as "nobody").
# Every changing command must exit 1 with the reason on stderr, print no success line
# and leave every file byte for byte as it was; then, with room again (full), the next
# command succeeds and no temporary file is left. Where mounting or changing the user
# is refused, the test says so and exits 77, which ctest reports as skipped.
set -uo pipefail
repo=${1:?usage: full-disk-test.sh REPO QVJOBS WORK_DIR full|readonly}
qvjobs=${2:?}
work=${3:?}
mode=${4:?}
wine=${5:-}
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }
skip() { echo "SKIPPED: $*"; exit 77; }

mount_point="$work/root"
cleanup() {
  if mountpoint -q "$mount_point" 2>/dev/null; then umount "$mount_point"; fi
}
trap cleanup EXIT
cleanup
rm -rf "$work"
mkdir -p "$mount_point"

as_user=()
if [ "$mode" = full ]; then
  [ "$(id -u)" = 0 ] || skip "not root: a tmpfs cannot be mounted for the full-disk test"
  mount -t tmpfs -o size=256k,mode=0755 qvfull "$mount_point" 2>"$work/mount.err" ||
    skip "mounting a tmpfs was refused: $(cat "$work/mount.err")"
else
  [ "$(id -u)" = 0 ] || skip "not root: cannot run as a user without write rights"
  command -v setpriv >/dev/null || skip "setpriv is missing: cannot change the user"
  # The leak checker cannot stop the process's threads as another user.
  as_user=(setpriv --reuid=nobody --regid=nogroup --clear-groups env ASAN_OPTIONS=detect_leaks=0)
  "${as_user[@]}" test -x "$qvjobs" 2>/dev/null ||
    skip "the user nobody cannot run $qvjobs from here"
fi
"$repo/tools/make-demo-root.sh" "$mount_point" >/dev/null || { fail "demo root"; exit 1; }
# The Windows program runs under Wine and names the folder by its drive letter.
root="$mount_point"
runner=()
if [ -n "$wine" ]; then
  root="Z:${mount_point//\//\\}"
  runner=("${QV_WINE:-/usr/lib/wine/wine64}")
fi
# Two jobs whose numbers the commands name: the first and the last of the demo list.
first=$("${runner[@]}" "$qvjobs" --root "$root" list 2>/dev/null </dev/null | head -1 |
  cut -d'|' -f1)
# The demo has no backup sets; one for Backup Now, in the product's text form.
set_name="Documents"
{ printf '\xff\xfe'; printf '%s\b1\r\n' "$set_name" | iconv -f UTF-8 -t UTF-16LE; } \
  >"$mount_point/QVCOMMON/BacksetData.txt"
[ -n "$first" ] && [ -n "$set_name" ] || { fail "no job or set in the demo data"; exit 1; }

if [ "$mode" = full ]; then
  # Fill the disk: what is left is less than a page, so no new file fits.
  dd if=/dev/zero of="$mount_point/fill" bs=4k 2>/dev/null
  dd if=/dev/zero of="$mount_point/fill2" bs=1 2>/dev/null
  reason="No space left on device|Disk full|not enough space"
else
  chmod -R a+rX,go-w "$mount_point"
  reason="Permission denied"
fi

# Every file but the trace (whose appends may still fit in its last page, and are
# cut back when they do not), with its checksum.
snapshot() {
  (cd "$mount_point" && find QVCOMMON -type f ! -name SerTraceFile.txt -print0 | sort -z |
    xargs -0 md5sum)
}
before=$(snapshot)
run() {
  "${as_user[@]}" "${runner[@]}" "$qvjobs" --root "$root" --answer yes "$@" >"$work/out.txt" \
    2>"$work/err.txt" </dev/null
  code=$?
}
# The state word as the engine leaves it, overwritten in place: a full disk and a
# folder the user may not write still let the test put it there.
put_word() {
  printf '%s\0' "$1" | dd of="$mount_point/QVCOMMON/scheduleData.txt" bs=1 seek=2 \
    conv=notrunc 2>/dev/null
  before=$(snapshot)
}
runs=0
# Stop needs a running job ("1"), Stop completely a stop the engine did not take up
# ("2"; it waits its nine seconds first).
for command in "run-now $first" "backup-now $set_name" \
  "edit $first --time 9:30:00 --daily" "delete $first" "set-state 2" "1:stop" \
  "2:stop-completely"; do
  case $command in
    [0-9]:*) put_word "${command%%:*}" && command=${command#*:} ;;
  esac
  read -r -a words <<<"$command"
  # A set name may hold blanks: backup-now takes all that follows.
  [ "${words[0]}" = backup-now ] && words=(backup-now "$set_name")
  run "${words[@]}"
  runs=$((runs + 1))
  [ "$code" = 1 ] || fail "$command exited $code, not 1"
  grep -qE "could not write: .*($reason)" "$work/err.txt" ||
    fail "$command: no reason on stderr: $(cat "$work/err.txt")"
  if grep -qE "has been added|successfully set up|will stop shortly" "$work/out.txt"; then
    fail "$command claimed success: $(cat "$work/out.txt")"
  fi
  [ "$(snapshot)" = "$before" ] || fail "$command changed a file"
  [ -z "$(find "$mount_point" -name '*.qvtmp')" ] || fail "$command left a temporary file"
done
echo "ran $runs changing commands on a $mode data root"

if [ "$mode" = full ]; then
  rm -f "$mount_point/fill" "$mount_point/fill2"
  put_word 0
  run run-now "$first"
  [ "$code" = 0 ] || fail "with room again run-now exited $code: $(cat "$work/err.txt")"
  grep -q "A record has been added" "$work/out.txt" || fail "no success line with room again"
  [ -z "$(find "$mount_point" -name '*.qvtmp')" ] || fail "a temporary file was left"
fi
[ "$failures" = 0 ] || exit 1
echo "ok"
