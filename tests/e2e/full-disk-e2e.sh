#!/usr/bin/env bash
# full-disk-e2e.sh REPO TEST_EXE WORK_DIR
# The real monitor on a full disk: a small tmpfs with the demo data becomes the program
# folder's QVCOMMON (a link put in by this script once the test has made its program
# folder and asks for it), and the one test of TEST_EXE fills it and drives the monitor. Skipped (exit 77) with a message where mounting is refused.
set -uo pipefail
repo=${1:?usage: full-disk-e2e.sh REPO TEST_EXE WORK_DIR}
exe=${2:?}
work=${3:?}
runs="$(dirname "$exe")/runs"
name=FullDiskTest.EveryWriteIsRefusedHonestlyAndGoesThroughWithSpaceAgain
mnt="$work/mnt"

rm -rf "$work"
mkdir -p "$mnt" "$work/demo"
if ! mount -t tmpfs -o size=1m tmpfs "$mnt" 2>"$work/mount.err"; then
  echo "SKIPPED: a tmpfs cannot be mounted here ($(cat "$work/mount.err")): no full disk to test on"
  exit 77
fi
trap 'rm -f "$runs/$name/QVCOMMON"; umount "$mnt"' EXIT
"$repo/tools/make-demo-root.sh" "$work/demo" >/dev/null
cp -a "$work/demo/QVCOMMON/." "$mnt/"
# A backup set for Backup Now to list.
{
  printf '\xff\xfe'
  printf 'Documents\b1\r\n' | iconv -f UTF-8 -t UTF-16LE
} >"$mnt/BacksetData.txt"

"${QV_WINE:-/usr/lib/wine/wine64}" "$exe" --gtest_filter="$name" &
pid=$!
for ((i = 0; i < 600; i++)); do
  [ -e "$runs/$name/want-full-disk" ] && break
  kill -0 "$pid" 2>/dev/null || break
  sleep 0.1
done
if [ -e "$runs/$name/want-full-disk" ]; then
  ln -s "$mnt" "$runs/$name/QVCOMMON" && touch "$runs/$name/full-disk-ready"
fi
wait "$pid"
