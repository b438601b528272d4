#!/usr/bin/env bash
# check-format.sh [ROOT] [--fix]
# Every C++ source of src/, tests/, tools/ and bench/ as .clang-format lays it out;
# --fix formats them in place instead.
set -euo pipefail
root=.
fix=0
for a in "$@"; do
  case $a in
    --fix) fix=1 ;;
    *) root=$a ;;
  esac
done
cd "$root"
mapfile -t files < <(git ls-files 'src/*.cpp' 'src/*.h' 'tests/*.cpp' 'tests/*.h' 'tools/*.cpp' 'tools/*.h' 'bench/*.cpp' 'bench/*.h' 2>/dev/null ||
                     find src tests tools bench -name '*.cpp' -o -name '*.h')
if [ "$fix" = 1 ]; then
  clang-format -i --style=file "${files[@]}"
  echo "check-format: ${#files[@]} files formatted"
  exit 0
fi
if ! clang-format --dry-run -Werror --style=file "${files[@]}" 2>/tmp/check-format.$$; then
  grep -E '^[^ ].*: (error|warning)' /tmp/check-format.$$ | cut -d: -f1 | sort -u | sed 's/^/check-format: not formatted: /'
  rm -f /tmp/check-format.$$
  echo "check-format: run tools/check-format.sh --fix"
  exit 1
fi
rm -f /tmp/check-format.$$
echo "check-format: ${#files[@]} files, 0 problems"
