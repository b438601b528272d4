#!/usr/bin/env bash
# full-disk-e2e.sh REPO TEST_EXE TRUST_EXE WORK_DIR [full|read-only]
# The real monitor on a data folder that refuses writes: a small tmpfs with the demo data
# becomes the program folder's QVCOMMON (a link put in by this script once the test has
# made its program folder and asks for it). "full": the one full-disk test of TEST_EXE
# fills it. "read-only": the password's folder is a second tmpfs inside it, and the
# read-only test asks for both to be remounted read-only ("read-only"), the data alone
# writable again ("writable-root"), or both ("writable"). Under Wine the programs run as
# root, whom mode bits do not stop: a read-only mount does.
# Update Password proves the account first: the loopback account service
# (tools/account-service) answers it with a certificate made for this run and trusted in
# this Wine prefix (TRUST_EXE) until the end. Skipped (exit 77) with a message where
# mounting (or remounting read-only) is refused.
set -uo pipefail
repo=${1:?usage: full-disk-e2e.sh REPO TEST_EXE TRUST_EXE WORK_DIR [full|read-only]}
exe=${2:?}
trust_exe=${3:?}
work=${4:?}
mode=${5:-full}
wine=${QV_WINE:-/usr/lib/wine/wine64}
runs="$(dirname "$exe")/runs"
case "$mode" in
  full) name=FullDiskTest.EveryWriteIsRefusedHonestlyAndGoesThroughWithSpaceAgain ;;
  read-only) name=ReadOnlyRootTest.EveryWriteIsRefusedHonestlyAndGoesThroughWhenWritable ;;
  *) echo "unknown mode $mode"; exit 2 ;;
esac
mnt="$work/mnt"
store="$mnt/goodone"
winpath() { echo "Z:${1//\//\\}"; }
utf16() { printf '\xff\xfe'; printf '%s\r\n' "$@" | iconv -f UTF-8 -t UTF-16LE; }

# A run cut short may have left its link and its mounts. The link goes first: the test
# replaces an earlier program folder of its name, and would follow the link into the data.
[ -L "$runs/$name/QVCOMMON" ] && rm -f "$runs/$name/QVCOMMON"
mountpoint -q "$store" 2>/dev/null && umount "$store"
mountpoint -q "$mnt" 2>/dev/null && umount "$mnt"
rm -rf "$work"
mkdir -p "$mnt" "$work/demo"
if ! mount -t tmpfs -o size=1m tmpfs "$mnt" 2>"$work/mount.err"; then
  echo "SKIPPED: a tmpfs cannot be mounted here ($(cat "$work/mount.err")): no disk to test on"
  exit 77
fi
mkdir -p "$store"
if [ "$mode" = read-only ]; then
  if ! { mount -t tmpfs -o size=64k tmpfs "$store" && mount -o remount,ro "$store" &&
    mount -o remount,rw "$store"; } 2>"$work/mount.err"; then
    echo "SKIPPED: a tmpfs cannot be mounted and remounted read-only here" \
      "($(cat "$work/mount.err")): no read-only data root to test on"
    mountpoint -q "$store" && umount "$store"
    umount "$mnt"
    exit 77
  fi
fi
service=
trusted=0
cleanup() {
  [ "$trusted" = 1 ] && "$wine" "$trust_exe" remove "$(winpath "$work/cert.der")" </dev/null
  [ -n "$service" ] && kill "$service" 2>/dev/null && wait "$service" 2>/dev/null
  rm -f "$runs/$name/QVCOMMON"
  mountpoint -q "$store" && umount "$store"
  umount "$mnt"
}
trap cleanup EXIT

openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj "/CN=127.0.0.1" \
  -addext "subjectAltName=DNS:127.0.0.1,IP:127.0.0.1" \
  -keyout "$work/cert.key" -out "$work/cert.pem" 2>/dev/null || exit 1
openssl x509 -in "$work/cert.pem" -outform der -out "$work/cert.der" || exit 1
/usr/bin/python3 "$repo/tools/account-service/account_service.py" --cert "$work/cert.pem" \
  --key "$work/cert.key" --untrusted-cert "$work/cert.pem" --untrusted-key "$work/cert.key" \
  --spool "$work/spool" --ports "$work/ports" --max-seconds 300 &
service=$!
for ((i = 0; i < 100; i++)); do
  [ -s "$work/ports" ] && break
  sleep 0.1
done
port=$(awk '$1 == "trusted" { print $2 }' "$work/ports" 2>/dev/null)
[ -n "$port" ] || { echo "the account service did not start"; exit 1; }
"$wine" "$trust_exe" add "$(winpath "$work/cert.der")" </dev/null || exit 1
trusted=1

"$repo/tools/make-demo-root.sh" "$work/demo" >/dev/null
cp -a "$work/demo/QVCOMMON/." "$mnt/"
# Two backup sets, for Backup Now to list and for Update Password to go on to its write.
utf16 $'Documents\b1' $'Mail\b2' >"$mnt/BacksetData.txt"
# The account the service proves, with a password stored earlier.
utf16 "[Corvane]" "UserName=goodone" "DisableAllSchdulers=0" \
  "AccountServer=https://127.0.0.1:$port" >"$mnt/qvwin.ini"
printf 'Earlier\r\n' >"$store/goodone.txt"
# Web management off: with an account and a stored password it is on by default, and then
# every tick of the monitor writes its answer to qvwin.ini (WebMessage) and the account's
# choice beside the password, whenever the tick comes, also between a test's "before" and
# "after". Those writes are not what these tests refuse.
printf '[Corvane]\r\nWebManage=0\r\n' >"$store/qvwinserver.ini"

# Remounts `how` (ro or rw) each mount named, retried while a program still has a file
# there open for writing; the reason on stdout when it cannot.
remount() {
  local how=$1 err=
  shift
  for m in "$@"; do
    for ((t = 0; t < 50; t++)); do
      err=$(mount -o "remount,$how" "$m" 2>&1) && break
      sleep 0.1
    done
    [ $t -lt 50 ] || { echo "remount,$how $m: $err"; return 1; }
  done
}
# One step the test asked for ("want-STEP" in its program folder).
step() {
  case "$1" in
    disk) ln -s "$mnt" "$runs/$name/QVCOMMON" ;;
    unlink) rm -f "$runs/$name/QVCOMMON" ;;
    read-only) remount ro "$mnt" "$store" ;;
    writable-root) remount rw "$mnt" ;;
    writable) remount rw "$mnt" "$store" ;;
    *) echo "no step $1"; return 1 ;;
  esac
}

# A run cut short leaves its requests behind: only this run's count.
rm -f "$runs/$name"/want-* "$runs/$name"/*-ready "$runs/$name"/*-failed
"$wine" "$exe" --gtest_filter="$name" &
pid=$!
while kill -0 "$pid" 2>/dev/null; do
  for want in "$runs/$name"/want-*; do
    [ -e "$want" ] || continue
    s=${want##*/want-}
    rm -f "$want"
    if why=$(step "$s" 2>&1); then
      touch "$runs/$name/$s-ready"
    else
      echo "$why" >"$runs/$name/$s-failed"
    fi
  done
  sleep 0.1
done
wait "$pid"
