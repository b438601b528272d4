#!/usr/bin/env bash
# msi-lint.sh MSI REPO BUILD_DIR VERSION: the installer's tables, read with msitools:
# every component has a key path, no path of the build machine is in the package,
# only the program and its pictures ship (stripped, the symbols kept beside the build),
# and the rows that the fix-ups add are there (docs/installer.md).
set -euo pipefail
msi=${1:?usage: msi-lint.sh MSI REPO BUILD_DIR VERSION}
repo=${2:?}
build=${3:?}
version=${4:?}
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }
[ -f "$msi" ] || { echo "FAIL: no package $msi"; exit 1; }
msi=$(realpath "$msi")

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/tables"
msidump -d "$work/tables" -t "$msi" >/dev/null
msiinfo suminfo "$msi" >"$work/tables/_SummaryInformation.txt"
# One file a table, CR LF lines; rows from the fourth line on.
rows() { tail -n +4 "$work/tables/$1.idt" | tr -d '\r'; }
field() { awk -F'\t' -v n="$1" '{ print $n }'; }

# Every component has a key path (a file or a registry value).
[ -n "$(rows Component)" ] || fail "no components"
for component in $(rows Component | awk -F'\t' '$6 == "" { print $1 }'); do
  fail "component $component has no key path"
done

# No path of this machine: the work tree, the build tree, any Unix or Wine drive path.
for path in "$repo" "$build" "$(realpath -m "$repo")" "$(realpath -m "$build")" "$HOME"; do
  [ -n "$path" ] && [ "$path" != / ] || continue
  if grep -rlF -- "$path" "$work/tables" >/dev/null; then
    fail "the package holds the path $path: $(grep -rlF -- "$path" "$work/tables" | xargs -n1 basename)"
  fi
done
if grep -rEl '(^|[[:space:]"=])(/(work|tmp|home|usr|root)/|[Zz]:\\)' "$work/tables" >/dev/null; then
  fail "the package holds an absolute path: $(grep -rEh '(^|[[:space:]"=])(/(work|tmp|home|usr|root)/|[Zz]:\\)' "$work/tables" | head -3)"
fi

# What ships: QVMonitor.exe, qvjobs.exe and the pictures, nothing of the engine or the tests.
files=$(rows File | field 3)
grep -qx 'QVMonitor.exe' <<<"$files" || fail "QVMonitor.exe is not in the package"
grep -qx 'qvjobs.exe' <<<"$files" || fail "qvjobs.exe is not in the package"
grep -qx 'artwork.txt' <<<"$files" || fail "the pictures are not in the package"
others=$(grep -iE '\.exe$|\.dll$' <<<"$files" | grep -vx -e 'QVMonitor.exe' -e 'qvjobs.exe' || true)
[ -z "$others" ] || fail "other programs ship: $(tr '\n' ' ' <<<"$others")"
grep -qiE 'QVCOMMON|scheduleData|\.log$' <<<"$files" && fail "data files ship: $files"

# The shipped programs are stripped and point at their symbols in the build tree.
mkdir -p "$work/files"
(cd "$work/files" && msiextract "$msi" >/dev/null)
for program in QVMonitor.exe qvjobs.exe; do
  shipped=$(find "$work/files" -name "$program" | head -1)
  if [ -z "$shipped" ]; then
    fail "$program could not be extracted"
    continue
  fi
  sections=$(x86_64-w64-mingw32-objdump -h "$shipped" 2>&1) || fail "$program is no program: $sections"
  grep -q ' \.debug_' <<<"$sections" && fail "the shipped $program carries debug information"
  link=$(x86_64-w64-mingw32-objcopy --dump-section .gnu_debuglink=/dev/stdout "$shipped" 2>/dev/null | tr -d '\0' | head -c 200 || true)
  [[ "$link" == "$program.debug"* ]] || fail "the shipped $program has no debug link (got '$link')"
  [ -f "$build/symbols/$program.debug" ] || fail "no symbols in $build/symbols/$program.debug"
done
exe=$(find "$work/files" -name QVMonitor.exe | head -1)
if [ -n "$exe" ]; then
  # Nor in the files it carries (a source path in the program, a path in a picture list).
  for path in "$repo" "$build" "$(realpath -m "$repo")" "$(realpath -m "$build")"; do
    leaks=$(grep -rlaF -- "$path" "$work/files" || true)
    [ -z "$leaks" ] || fail "the package's files hold the path $path: $leaks"
  done
  # One version: the program's own version resource says what the package says.
  resource=$(x86_64-w64-mingw32-windres -i "$exe" -O rc 2>/dev/null |
    sed -n 's/^ *PRODUCTVERSION *\([0-9]*\), *\([0-9]*\), *\([0-9]*\),.*/\1.\2.\3/p' | head -1)
  [ "$resource" = "$(cut -d. -f1-3 <<<"$version")" ] ||
    fail "QVMonitor.exe says version '$resource', the build files $version"
  size=$(stat -c %s "$exe")
  echo "QVMonitor.exe in the package: $size bytes"
  [ "$size" -lt $((2 * 1024 * 1024)) ] || fail "QVMonitor.exe is $size bytes, over 2 MB"
fi
size=$(stat -c %s "$msi")
echo "CorvaneMonitor.msi: $size bytes"
[ "$size" -lt $((6 * 1024 * 1024)) ] || fail "the package is $size bytes, over 6 MB"

# Version, upgrade code and the major upgrade.
seq() { rows InstallExecuteSequence | awk -F'\t' -v a="$1" '$1 == a { print $3 }'; }
property() { rows Property | awk -F'\t' -v k="$1" '$1 == k { print $2 }'; }
[ "$(property ProductVersion)" = "$(cut -d. -f1-3 <<<"$version")" ] ||
  fail "ProductVersion $(property ProductVersion), the build files say $version"
upgrade=$(grep -o 'UpgradeCode="[^"]*"' "$repo/packaging/CorvaneMonitor.wxs" | cut -d'"' -f2)
[ "$(property UpgradeCode)" = "{$upgrade}" ] || fail "UpgradeCode $(property UpgradeCode), not {$upgrade}"
grep -qP "^\\{$upgrade\\}\t\t$(cut -d. -f1-3 <<<"$version")\t\t513\t\tWIX_UPGRADE_DETECTED" <<<"$(rows Upgrade)" ||
  fail "no major upgrade of every version up to this one: $(rows Upgrade)"
grep -q 'x64' "$work/tables/_SummaryInformation.txt" || fail "not a 64-bit package"

# The start at logon, as AddToRun writes it, under the root of the Windows version.
run=$(rows Registry | awk -F'\t' '$4 == "QVWin Monitor"')
grep -qP '^\S+\t1\tSoftware\\Microsoft\\Windows\\Currentversion\\run\tQVWin Monitor\t\[INSTALLDIR\]QVMonitor\.exe Min\tRunAtLogonUser$' <<<"$run" ||
  fail "the user's Run value is not as AddToRun writes it: $run"
grep -qP '^\S+\t2\t.*\tRunAtLogonMachine$' <<<"$run" || fail "no machine Run value below Windows 6"
grep -qP '^RunAtLogonUser\t.*\tVersionNT >= 600\t' <<<"$(rows Component)" || fail "the user's Run value has no condition"
grep -qP '^RunAtLogonMachine\t.*\tVersionNT < 600\t' <<<"$(rows Component)" || fail "the machine's Run value has no condition"

# The class for the machine, and its keys removed whole on uninstall.
registry=$(rows Registry)
clsid='{1984E5BD-394A-449B-A09A-6648BCB1AF6F}'
grep -qP "^\S+\t2\tSoftware\\\\Classes\\\\CLSID\\\\\\Q$clsid\\E\\\\LocalServer32\t\t\"\[#QVMonitorExe\]\"\t" <<<"$registry" ||
  fail "no LocalServer32 of the installed program"
grep -qP '\tProxyStubClsid32\t\t\{00020424-0000-0000-C000-000000000046\}\t' <<<"$registry" ||
  grep -qP 'ProxyStubClsid32\t\t\{00020424-0000-0000-C000-000000000046\}' <<<"$registry" ||
  fail "the interface is not marshalled by the type library"
for root in 1 2; do
  grep -qP "^\S+\t$root\tSoftware\\\\Classes\\\\CLSID\\\\\\Q$clsid\\E\t-\t\t" <<<"$registry" ||
    fail "the class key of root $root is not removed on uninstall"
done

# The data folder: made by the program's component, writable for the users.
grep -qP '^QVCOMMON\tMonitor$' <<<"$(rows CreateFolder)" || fail "QVCOMMON is not made by the install"
[ -n "$(seq CreateFolders)" ] && [ -n "$(seq RemoveFolders)" ] || fail "the folders are neither made nor removed"
grep -qP '^\S+\tQVCOMMON\tCreateFolder\t.*\(A;OICI;0x1301bf;;;BU\)' <<<"$(rows MsiLockPermissionsEx 2>/dev/null)" ||
  fail "QVCOMMON is not writable for the users"

# The running monitor is ended on removal, inside the script, before the files go.
end=$(seq EndMonitor)
if [ -z "$end" ] || [ "$end" -le "$(seq InstallInitialize)" ] || [ "$end" -ge "$(seq RemoveFiles)" ]; then
  fail "EndMonitor is not between InstallInitialize and RemoveFiles (at '$end')"
fi
grep -qP '^EndMonitor\tREMOVE~="ALL"\t' <<<"$(rows InstallExecuteSequence)" || fail "EndMonitor runs not only on removal"
grep -qP '^EndMonitor\t3170\tSystem64Folder\t"\[System64Folder\]taskkill\.exe" /F /IM QVMonitor\.exe' <<<"$(rows CustomAction)" ||
  fail "EndMonitor does not run the system's taskkill: $(rows CustomAction)"

# A plain shortcut on the Start menu to the installed program.
grep -qP '^\S+\tProgramMenuFolder\tCorvane for Windows Monitor\tMonitor\t\[#QVMonitorExe\]\t' <<<"$(rows Shortcut)" ||
  fail "the Start menu shortcut is not a plain one to the program: $(rows Shortcut)"

[ $failures -eq 0 ] && echo "msi lint: all checks passed"
exit $((failures > 0))
