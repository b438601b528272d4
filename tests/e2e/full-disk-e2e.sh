#!/usr/bin/env bash
# full-disk-e2e.sh REPO TEST_EXE TRUST_EXE WORK_DIR
# The real monitor on a full disk: a small tmpfs with the demo data becomes the program
# folder's QVCOMMON (a link put in by this script once the test has made its program
# folder and asks for it), and the one test of TEST_EXE fills it and drives the monitor.
# Update Password proves the account first: the loopback account service
# (tools/account-service) answers it with a certificate made for this run and trusted in
# this Wine prefix (TRUST_EXE) until the end. Skipped (exit 77) with a message where
# mounting is refused.
set -uo pipefail
repo=${1:?usage: full-disk-e2e.sh REPO TEST_EXE TRUST_EXE WORK_DIR}
exe=${2:?}
trust_exe=${3:?}
work=${4:?}
wine=${QV_WINE:-/usr/lib/wine/wine64}
runs="$(dirname "$exe")/runs"
name=FullDiskTest.EveryWriteIsRefusedHonestlyAndGoesThroughWithSpaceAgain
mnt="$work/mnt"
winpath() { echo "Z:${1//\//\\}"; }
utf16() { printf '\xff\xfe'; printf '%s\r\n' "$@" | iconv -f UTF-8 -t UTF-16LE; }

rm -rf "$work"
mkdir -p "$mnt" "$work/demo"
if ! mount -t tmpfs -o size=1m tmpfs "$mnt" 2>"$work/mount.err"; then
  echo "SKIPPED: a tmpfs cannot be mounted here ($(cat "$work/mount.err")): no full disk to test on"
  exit 77
fi
service=
trusted=0
cleanup() {
  [ "$trusted" = 1 ] && "$wine" "$trust_exe" remove "$(winpath "$work/cert.der")" </dev/null
  [ -n "$service" ] && kill "$service" 2>/dev/null && wait "$service" 2>/dev/null
  rm -f "$runs/$name/QVCOMMON"
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
mkdir -p "$mnt/goodone"
printf 'Earlier\r\n' >"$mnt/goodone/goodone.txt"

# A run cut short leaves its request behind: only this run's counts.
rm -f "$runs/$name/want-full-disk" "$runs/$name/full-disk-ready"
"$wine" "$exe" --gtest_filter="$name" &
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
