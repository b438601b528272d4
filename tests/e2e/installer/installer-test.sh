#!/usr/bin/env bash
# installer-test.sh REPO STAGE MSI PROBE MINIMAL_TRAY WORK VERSION
# The installer under Wine, in a fresh prefix of its own (tools/with-wine.sh on
# WORK/prefix, made anew every run) so that nothing it installs reaches the other
# tests: install silently; the files, the class by its ProgID served by the installed
# program, the Run value, the Start menu shortcut; the monitor started as at logon
# (with "Min") and its tray icon, its working set beside a minimal tray program's;
# an upgrade by a package that differs only in its version, keeping QVCOMMON; the
# removal, which ends the running monitor and keeps QVCOMMON with its files.
set -euo pipefail
usage="usage: installer-test.sh REPO STAGE MSI PROBE MINIMAL_TRAY WORK VERSION"
if [ "${1:-}" != --inside ]; then
  repo=${1:?$usage}
  work=${6:?$usage}
  rm -rf "$work"
  mkdir -p "$work"
  # Wine's menu builder would write the shortcut into this machine's own menus.
  rc=0
  WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d" WINEDEBUG=-all \
    "$repo/tools/with-wine.sh" "$work/prefix" -- bash "$0" --inside "$@" || rc=$?
  # The prefix is 700 MB: kept only after a failure, for a look.
  if [ $rc -eq 0 ]; then rm -rf "$work/prefix" "$work/prefix.lock"; else echo "prefix kept: $work/prefix"; fi
  exit $rc
fi
shift
repo=$1 stage=$2 msi=$3 probe=$4 tray=$5 work=$6 version=$7
wine=${QV_WINE:?}
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }
step() { echo "== $*"; }
winpath() { echo "Z:${1//\//\\}"; }
shots=${QV_SCREENSHOT_DIR:-$repo/build/screenshots/e2e}

dir='C:\Program Files\Corvane for Windows'
exe="$dir\\QVMonitor.exe"
unixDir="$WINEPREFIX/drive_c/Program Files/Corvane for Windows"
clsid='{1984E5BD-394A-449B-A09A-6648BCB1AF6F}'
runKey='HKCU\Software\Microsoft\Windows\CurrentVersion\Run'

w() { "$wine" "$@" </dev/null 2>/dev/null | tr -d '\r'; }
probe() { w "$probe" "$@"; }
regValue() {   # regValue KEY NAME|'' : the data of a value, empty when absent
  local out
  if [ -n "$2" ]; then out=$(w reg query "$1" /v "$2") || return 0
  else out=$(w reg query "$1" /ve) || return 0; fi
  grep -E 'REG_(SZ|EXPAND_SZ)' <<<"$out" | head -1 | sed -E 's/^.*REG_(SZ|EXPAND_SZ)[[:space:]]+//'
}
hasKey() { w reg query "$1" >/dev/null; }
monitors() { probe processes QVMonitor.exe | grep -c '^process=' || true; }
trace() { iconv -f UTF-16 -t UTF-8 "$unixDir/QVCOMMON/SerTraceFile.txt" 2>/dev/null | tr -d '\r' || true; }
msiexec() {   # msiexec LOG ARGS...: Windows Installer, its log kept in WORK
  local log=$1
  shift
  local t0=$SECONDS rc=0
  "$wine" msiexec "$@" /l*v "$(winpath "$work/$log")" </dev/null >/dev/null 2>&1 || rc=$?
  echo "msiexec $* -> exit $rc ($((SECONDS - t0)) s, log $work/$log)"
  return $rc
}
# The monitor as the Run value starts it at logon: the program, then "Min".
startFromRun() {
  local value=$1
  local program=${value% Min}
  (cd "$unixDir" && exec "$wine" "$program" Min </dev/null >/dev/null 2>&1) &
  for _ in $(seq 60); do
    trace | grep -q '^HideFromTaskBar called from the Monitor\.' && return 0
    sleep 0.5
  done
  return 1
}
endMonitors() { w taskkill /F /IM QVMonitor.exe >/dev/null || true; }

step "install: msiexec /i $(basename "$msi") /qn"
msiexec install.log /i "$(winpath "$msi")" /qn || fail "the install failed"
[ -f "$unixDir/QVMonitor.exe" ] || fail "no $exe"
[ -f "$unixDir/images/artwork.txt" ] || fail "no pictures in $dir\\images"
[ -d "$unixDir/QVCOMMON" ] || fail "no data folder $dir\\QVCOMMON"
shipped=$(cd "$unixDir" && find . -type f | sort)
others=$(grep -iE '\.exe$|\.dll$' <<<"$shipped" | grep -vx -e './QVMonitor.exe' -e './qvjobs.exe' || true)
[ -z "$others" ] || fail "more programs installed: $(tr '\n' ' ' <<<"$others")"
cmp -s "$stage/QVMonitor.exe" "$unixDir/QVMonitor.exe" || fail "the installed QVMonitor.exe is not the staged one"
cmp -s "$stage/qvjobs.exe" "$unixDir/qvjobs.exe" || fail "the installed qvjobs.exe is not the staged one"
echo "installed: $(wc -l <<<"$shipped") files, QVMonitor.exe $(stat -c %s "$unixDir/QVMonitor.exe") bytes"

step "the installed qvjobs.exe status, by the program folder's path"
# A fresh install has no job yet: CRITICAL (exit 2), and nothing under the data root changes.
dataDigest() { (cd "$unixDir/QVCOMMON" && find . -printf '%p %s %T@\n' | sort && find . -type f -exec md5sum {} + | sort) | md5sum; }
before=$(dataDigest)
rc=0
status=$("$wine" "$dir\qvjobs.exe" --root "$dir" status </dev/null 2>/dev/null | tr -d '\r') || rc=$?
echo "qvjobs.exe status -> exit $rc: $(head -1 <<<"$status")"
[ "$rc" = 2 ] || fail "qvjobs.exe status exited $rc, not 2"
[ "$(head -1 <<<"$status")" = "CORVANE CRITICAL - No scheduled backup/restore job(s)" ] ||
  fail "qvjobs.exe status said: $status"
json=$("$wine" "$dir\qvjobs.exe" --root "$dir" status --json </dev/null 2>/dev/null | tr -d '\r') || true
python3 -c 'import json, sys; d = json.loads(sys.argv[1]); assert d["status"] == "CRITICAL" and d["nextJob"] is None, d' "$json" ||
  fail "qvjobs.exe status --json: $json"
[ "$(dataDigest)" = "$before" ] || fail "qvjobs.exe status changed the data folder"

step "the class by its ProgID, by IDispatch and by its vtable"
[ "$(regValue "HKLM\\Software\\Classes\\CLSID\\$clsid\\LocalServer32" '')" = "\"$exe\"" ] ||
  fail "LocalServer32 is not the installed program: $(regValue "HKLM\\Software\\Classes\\CLSID\\$clsid\\LocalServer32" '')"
call=$(probe call) || true
echo "$call"
grep -qx 'dispatch=01:05:09' <<<"$call" || fail "no IDispatch call of GetProperTime"
grep -qx 'vtable=01:05:09' <<<"$call" || fail "no vtable call of GetProperTime"
grep -qxF "server=$exe" <<<"$call" || fail "the class was not served by the installed program"
endMonitors

step "the Run value and the Start menu shortcut"
run=$(regValue "$runKey" 'QVWin Monitor')
echo "Run: QVWin Monitor = $run"
[ "$run" = "$exe Min" ] || fail "the Run value is '$run', AddToRun writes '$exe Min'"
w reg query "$runKey" /v 'QVWin Monitor' | grep -q 'REG_SZ' || fail "the Run value is not a plain string"
[ -z "$(regValue 'HKLM\Software\Microsoft\Windows\CurrentVersion\Run' 'QVWin Monitor')" ] ||
  fail "a Run value for the machine on Windows 10"
lnk=$(find "$WINEPREFIX/drive_c" -name 'Corvane for Windows Monitor.lnk' | head -1)
if [ -z "$lnk" ]; then
  fail "no Start menu shortcut"
else
  echo "shortcut: ${lnk#"$WINEPREFIX/"}"
  [[ "$lnk" == */Start\ Menu/Programs/* ]] || fail "the shortcut is not in a Start menu"
  target=$(probe shortcut "$(winpath "$lnk")" | sed -n 's/^target=//p')
  [ "$target" = "$exe" ] || fail "the shortcut points at '$target'"
fi

step "the monitor at logon: $run"
startFromRun "$run" || fail "the installed monitor did not start into the tray: $(trace | tail -3)"
sleep 2
icons=$(probe tray QVMonitor.exe)
echo "$icons"
grep -qx 'icons=1' <<<"$icons" || fail "the monitor has no tray icon"
"$repo/tools/screenshot.sh" "$shots/installer-tray.png"

step "working sets: the monitor and a minimal tray program"
(cd "$(dirname "$tray")" && exec "$wine" "$tray" </dev/null >/dev/null 2>&1) &
sleep 4
grep -qx 'icons=1' <<<"$(probe tray "$(basename "$tray")")" || fail "the minimal tray program shows no icon either"
monitorSet=$(probe processes QVMonitor.exe | sed -n 's/^process=\([0-9]*\) .*/\1/p' | head -1)
minimalSet=$(probe processes "$(basename "$tray")" | sed -n 's/^process=\([0-9]*\) .*/\1/p' | head -1)
w taskkill /F /IM "$(basename "$tray")" >/dev/null || true
echo "working set: QVMonitor.exe ${monitorSet:-?} bytes, minimal tray ${minimalSet:-?} bytes"
if [ -n "$monitorSet" ] && [ -n "$minimalSet" ] && [ "$minimalSet" -gt 0 ]; then
  echo "working set: the monitor is $(((monitorSet - minimalSet) / 1024)) KB above the minimal tray program"
else
  fail "the working sets could not be read"
fi

step "upgrade by a package of a higher version, the monitor running"
printf '\xff\xfe' >"$work/schedule.txt"
printf '0\r\n1|Installer test job|keep me\r\n' | iconv -f UTF-8 -t UTF-16LE >>"$work/schedule.txt"
cp "$work/schedule.txt" "$unixDir/QVCOMMON/scheduleData.txt"
IFS=. read -r major minor patch _ <<<"$version.0.0"
next="$major.$minor.$((patch + 1))"
bash "$repo/tools/build-msi.sh" "$stage" "$work/CorvaneMonitor-$next.msi" "$next" >/dev/null ||
  fail "the package of version $next could not be built"
msiexec upgrade.log /i "$(winpath "$work/CorvaneMonitor-$next.msi")" /qn || fail "the upgrade failed"
[ "$(monitors)" = 0 ] || fail "the monitor still runs after the upgrade"
[ -f "$unixDir/QVMonitor.exe" ] || fail "no program after the upgrade"
cmp -s "$work/schedule.txt" "$unixDir/QVCOMMON/scheduleData.txt" || fail "the upgrade changed QVCOMMON\\scheduleData.txt"
products=$(w reg query 'HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall' /s |
  grep -A20 -E 'DisplayName[[:space:]]+REG_SZ[[:space:]]+Corvane for Windows Monitor' |
  sed -n 's/^.*DisplayVersion[[:space:]]*REG_SZ[[:space:]]*//p' | sort -u | tr '\n' ' ')
echo "installed versions: $products"
[ "$products" = "$next " ] || fail "after the upgrade the installed versions are '$products', not '$next'"
[ -n "$(regValue "HKLM\\Software\\Classes\\CLSID\\$clsid\\LocalServer32" '')" ] || fail "the class is gone after the upgrade"
[ "$(regValue "$runKey" 'QVWin Monitor')" = "$exe Min" ] || fail "the Run value is gone after the upgrade"

step "removal: msiexec /x, the monitor running"
startFromRun "$run" || fail "the upgraded monitor did not start: $(trace | tail -3)"
msiexec uninstall.log /x "$(winpath "$work/CorvaneMonitor-$next.msi")" /qn || fail "the removal failed"
[ "$(monitors)" = 0 ] || fail "the monitor still runs after the removal"
[ -e "$unixDir/QVMonitor.exe" ] && fail "QVMonitor.exe is still there"
[ -e "$unixDir/qvjobs.exe" ] && fail "qvjobs.exe is still there"
[ -e "$unixDir/images" ] && fail "the pictures are still there"
for root in 'HKLM\Software\Classes' 'HKCU\Software\Classes' 'HKCR'; do
  hasKey "$root\\CLSID\\$clsid" && fail "the class is still registered in $root"
  hasKey "$root\\QVMonitor.IMonitor" && fail "the ProgID is still registered in $root"
done
[ -z "$(regValue "$runKey" 'QVWin Monitor')" ] || fail "the Run value is still there"
[ -n "$(find "$WINEPREFIX/drive_c" -name 'Corvane for Windows Monitor.lnk')" ] && fail "the shortcut is still there"
cmp -s "$work/schedule.txt" "$unixDir/QVCOMMON/scheduleData.txt" || fail "QVCOMMON\\scheduleData.txt did not stay"
echo "left: $(cd "$WINEPREFIX/drive_c/Program Files" && find 'Corvane for Windows' | tr '\n' ' ')"

[ $failures -eq 0 ] && echo "installer: all checks passed"
exit $((failures > 0))
