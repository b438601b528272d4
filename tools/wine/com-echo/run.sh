#!/usr/bin/env bash
# run.sh DIR METHOD VIA APARTMENT JOBS CALLS [SERVER_APARTMENT], inside tools/with-wine.sh
# (DIR as made by build.sh):
# starts DIR/echo-server.exe, then DIR/echo-client.exe with the server's Linux pid,
# and ends the server.
set -euo pipefail
dir=$1
shift
wine=${QV_WINE:?run inside tools/with-wine.sh}
# A server killed by an earlier run stays registered in the COM service: start it anew.
"$wine" net stop RpcSs >/dev/null 2>&1 </dev/null || true
"$wine" net start RpcSs >/dev/null 2>&1 </dev/null || true
ready="$dir/server-ready"
rm -f "$ready"
(cd "$dir" && exec "$wine" "$dir/echo-server.exe" "${6:-sta}" "$(basename "$ready")" \
  </dev/null >/dev/null 2>&1) &
for _ in $(seq 300); do
  [ -e "$ready" ] && break
  sleep 0.2
done
[ -e "$ready" ] || { echo "no server"; exit 1; }
pid=
for p in $(pgrep -f 'echo-server\.exe' 2>/dev/null); do
  if { tr '\0' '\n' <"/proc/$p/environ"; } 2>/dev/null | grep -qxF "WINEPREFIX=$WINEPREFIX"; then
    [ -z "$pid" ] || { echo "more than one server"; exit 1; }
    pid=$p
  fi
done
"$wine" "$dir/echo-client.exe" "$pid" "$1" "$2" "$3" "$4" "$5" </dev/null 2>/dev/null | tr -d '\r'
kill "$pid" 2>/dev/null || true
while kill -0 "$pid" 2>/dev/null; do sleep 0.2; done
