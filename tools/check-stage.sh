#!/usr/bin/env bash
# check-stage.sh STAGE_DIR: what the program folder holds, and what it still lacks of
# a complete install (the monitor, its pictures, the simulated engine in both forms).
# Only a missing monitor or a program with its debug information is an error: the
# other parts arrive as their tools are built.
set -euo pipefail
stage=${1:?usage: check-stage.sh STAGE_DIR}
here=$(cd "$(dirname "$0")" && pwd)
missing=0
have() {   # have PATH WHAT [SOURCE_FOLDER]
  if [ -e "$stage/$1" ]; then
    echo "stage: $1"
  elif [ -n "${3:-}" ] && [ ! -d "$here/$3" ]; then
    echo "stage: ($1 not yet: no tools/$3)"
  else
    echo "stage: MISSING $1 ($2)"
    missing=$((missing + 1))
  fi
}
have QVMonitor.exe "the monitor"
have images/artwork.txt "the pictures, drawn by the native qvartwork; build the native tree first" artwork
if [ -d "$stage/images" ]; then
  # The pictures at four scales have a budget of 4 MB (docs/artwork.md).
  bytes=$(find "$stage/images" -type f -printf '%s\n' | awk '{ n += $1 } END { print n + 0 }')
  files=$(find "$stage/images" -type f | wc -l)
  echo "stage: images/ holds $files files, $bytes bytes"
  if [ "$bytes" -ge $((4 * 1024 * 1024)) ]; then
    echo "stage: images/ is over its 4 MB budget (artwork_tests fails too)"
  fi
fi
have QVBackground_955.exe "the simulated background engine" engine-sim
have "QVWin Service_955.exe" "the simulated service engine" engine-sim
# What ships is stripped: the debug information stays in the build's symbols/ folder,
# named by each program's debug link (docs/installer.md).
unstripped=0
while IFS= read -r -d '' exe; do
  name=${exe#"$stage"/}
  if x86_64-w64-mingw32-objdump -h "$exe" 2>/dev/null | grep -q ' \.debug_'; then
    echo "stage: $name carries debug information (it should be stripped)"
    unstripped=$((unstripped + 1))
  else
    echo "stage: $name $(stat -c %s "$exe") bytes, stripped"
  fi
done < <(find "$stage" -maxdepth 2 -type f -iname '*.exe' -print0 | sort -z)
msi="$stage/../CorvaneMonitor.msi"
if [ -f "$msi" ]; then
  echo "installer: $(cd "$(dirname "$msi")" && pwd)/CorvaneMonitor.msi, $(stat -c %s "$msi") bytes"
else
  echo "installer: (no CorvaneMonitor.msi yet: it needs the pictures and wixl)"
fi
if [ $missing -gt 0 ]; then
  echo "build: program folder in $stage, $missing parts missing"
else
  echo "build: program folder in $stage"
fi
[ -f "$stage/QVMonitor.exe" ] && [ $unstripped -eq 0 ]
