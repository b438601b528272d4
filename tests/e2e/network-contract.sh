#!/usr/bin/env bash
# network-contract.sh REPO TEST_EXE TRUST_EXE WORK_DIR [gtest arguments...]
# Runs the WinHTTP objects' contract (TEST_EXE, under Wine) against the loopback
# account service (tools/account-service) on 127.0.0.1. Two certificates are made
# afresh for the run: the first is added to the Root store of this Wine prefix only
# (TRUST_EXE) and taken out again at the end; the second is trusted nowhere.
set -euo pipefail
repo=${1:?usage: network-contract.sh REPO TEST_EXE TRUST_EXE WORK_DIR}
test_exe=${2:?}
trust_exe=${3:?}
work=${4:?}
shift 4
wine=${QV_WINE:-/usr/lib/wine/wine64}
python=/usr/bin/python3
winpath() { echo "Z:${1//\//\\}"; }

rm -rf "$work"
mkdir -p "$work"
for name in trusted untrusted; do
  openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj "/CN=127.0.0.1" \
    -addext "subjectAltName=DNS:127.0.0.1,IP:127.0.0.1" \
    -keyout "$work/$name.key" -out "$work/$name.pem" 2>/dev/null
done
openssl x509 -in "$work/trusted.pem" -outform der -out "$work/trusted.der"

"$python" "$repo/tools/account-service/account_service.py" --cert "$work/trusted.pem" \
  --key "$work/trusted.key" --untrusted-cert "$work/untrusted.pem" \
  --untrusted-key "$work/untrusted.key" --spool "$work/spool" --ports "$work/ports" \
  --max-seconds 240 &
service=$!
trusted_added=0
cleanup() {
  if [ "$trusted_added" = 1 ]; then
    "$wine" "$trust_exe" remove "$(winpath "$work/trusted.der")" </dev/null || true
  fi
  kill "$service" 2>/dev/null || true
  wait "$service" 2>/dev/null || true
}
trap cleanup EXIT
for _ in $(seq 100); do
  [ -f "$work/ports" ] && break
  sleep 0.1
done
[ -f "$work/ports" ] || { echo "the account service did not start"; exit 1; }
port() { awk -v n="$1" '$1 == n { print $2 }' "$work/ports"; }

"$wine" "$trust_exe" add "$(winpath "$work/trusted.der")" </dev/null
trusted_added=1

export QV_TRUSTED_URL="https://127.0.0.1:$(port trusted)"
export QV_UNTRUSTED_URL="https://127.0.0.1:$(port untrusted)"
export QV_PLAIN_URL="http://127.0.0.1:$(port plain)"
export QV_SPOOL="$(winpath "$work/spool")"
"$wine" "$test_exe" "$@" </dev/null
