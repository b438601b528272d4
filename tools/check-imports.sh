#!/usr/bin/env bash
# check-imports.sh DIR: every Windows program built under DIR may import only DLLs
# that come with Windows itself. A mingw runtime DLL (libstdc++-6, libgcc_s,
# libwinpthread) means a lost -static: Wine may still find it here, a customer's
# machine will not.
set -euo pipefail
dir=${1:?usage: check-imports.sh BUILD_DIR}
objdump=x86_64-w64-mingw32-objdump

allowed=' kernel32.dll user32.dll gdi32.dll advapi32.dll shell32.dll ole32.dll oleaut32.dll
  comctl32.dll comdlg32.dll psapi.dll winmm.dll rasapi32.dll version.dll msvcrt.dll ntdll.dll
  shlwapi.dll uxtheme.dll dwmapi.dll imm32.dll ws2_32.dll wininet.dll winhttp.dll crypt32.dll
  bcrypt.dll secur32.dll userenv.dll netapi32.dll iphlpapi.dll msimg32.dll hhctrl.ocx
  wtsapi32.dll powrprof.dll setupapi.dll rpcrt4.dll oleacc.dll windowscodecs.dll '
allowed=" $(echo $allowed) "   # one space around every name, also at line ends

programs=0
problems=0
while IFS= read -r -d '' exe; do
  programs=$((programs + 1))
  while read -r dll; do
    lower=$(tr '[:upper:]' '[:lower:]' <<<"$dll")
    case "$lower" in api-ms-win-*) continue ;; esac
    if [[ "$allowed" != *" $lower "* ]]; then
      echo "${exe#"$dir"/}: imports $dll, which Windows does not have"
      problems=$((problems + 1))
    fi
  done < <("$objdump" -p "$exe" | sed -n 's/^[[:space:]]*DLL Name: //p')
done < <(find "$dir" \( -name CMakeFiles -o -name '*prefix*' \) -prune -o \
           -type f \( -iname '*.exe' -o -iname '*.dll' \) -print0 | sort -z)

echo "check-imports: $programs programs, $problems foreign imports"
[ $problems -eq 0 ]
