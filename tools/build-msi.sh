#!/usr/bin/env bash
# build-msi.sh STAGE_DIR OUT.msi VERSION: the monitor's installer from the program folder.
# Only QVMonitor.exe, qvjobs.exe and images\ go in (never the simulated engine, the other
# tools or the data of a run). wixl (Debian's msitools) builds packaging/CorvaneMonitor.wxs with the
# pictures listed by wixl-heat; then msibuild applies packaging/msi-fixups.sql and adds
# the data folder's lock (packaging/MsiLockPermissionsEx.idt), which wixl cannot write.
# VERSION is the build files' version; the package takes its first three fields (the
# ones Windows Installer compares). See docs/installer.md.
set -euo pipefail
usage="usage: build-msi.sh STAGE_DIR OUT.msi VERSION"
stage=${1:?$usage}
out=${2:?$usage}
version=${3:?$usage}
here=$(cd "$(dirname "$0")" && pwd)
packaging=$(cd "$here/../packaging" && pwd)

for program in QVMonitor.exe qvjobs.exe; do
  [ -f "$stage/$program" ] || { echo "build-msi: no $stage/$program" >&2; exit 1; }
done
[ -f "$stage/images/artwork.txt" ] || { echo "build-msi: no pictures in $stage/images" >&2; exit 1; }
msiVersion=$(cut -d. -f1-3 <<<"$version")
[[ "$msiVersion" =~ ^[0-9]+\.[0-9]+\.[0-9]+$ ]] || { echo "build-msi: bad version $version" >&2; exit 1; }

out=$(realpath -m "$out")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# The package is built from a copy of what ships, by paths relative to it: no path of
# this machine ends up in its tables.
mkdir -p "$work/files/images"
cp "$stage/QVMonitor.exe" "$stage/qvjobs.exe" "$work/files/"
cp -R "$stage/images/." "$work/files/images/"
(cd "$work/files" && find images -type f | LC_ALL=C sort |
  wixl-heat --prefix images/ --directory-ref IMAGESDIR --component-group Images \
    --var var.Images --win64) >"$work/images.wxs"
cp "$packaging/CorvaneMonitor.wxs" "$work/"
(cd "$work/files" && wixl -a x64 -D Version="$msiVersion" -D Stage=. -D Images=images -D Win64=yes \
  -o "$work/package.msi" ../CorvaneMonitor.wxs ../images.wxs) 2> >(grep -v -e 'unimplemented' >&2)

args=()
while IFS= read -r line; do
  line=${line%$'\r'}
  [[ -z "$line" || "$line" == --* ]] && continue
  args+=(-q "${line//@VERSION@/$msiVersion}")
done <"$packaging/msi-fixups.sql"
[ ${#args[@]} -eq 0 ] || msibuild "$work/package.msi" "${args[@]}"
cp "$packaging/MsiLockPermissionsEx.idt" "$work/"
(cd "$work" && msibuild package.msi -i MsiLockPermissionsEx.idt)
mkdir -p "$(dirname "$out")"
mv "$work/package.msi" "$out"
echo "build-msi: $out ($msiVersion, $(stat -c %s "$out") bytes)"
