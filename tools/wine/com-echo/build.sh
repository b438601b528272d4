#!/usr/bin/env bash
# build.sh OUT_DIR: the bare COM server and client of this folder, cross-built with the
# mingw-w64 tool chain into OUT_DIR (echo-server.exe with its type library inside,
# echo-client.exe). Nothing of the monitor is in them.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
out=${1:?usage: build.sh OUT_DIR}
mkdir -p "$out"
cd "$out"
widl="x86_64-w64-mingw32-widl -m64 -I/usr/include/wine/wine/windows
  -L/usr/lib/x86_64-linux-gnu/wine/x86_64-windows"
# The header and the type library in separate runs: together, no type library is written.
$widl -h -H Echo_h.h -u -U Echo_i.c "$here/Echo.idl"
$widl -t -T Echo.tlb "$here/Echo.idl"
echo '1 TYPELIB "Echo.tlb"' >echo.rc
x86_64-w64-mingw32-windres echo.rc -O coff -o echo_rc.o
cxx="x86_64-w64-mingw32-g++-posix -O2 -std=c++20 -static -static-libgcc -static-libstdc++ -I$out"
$cxx "$here/echo-server.cpp" Echo_i.c echo_rc.o -o echo-server.exe -lole32 -loleaut32 -luuid \
  -mwindows
$cxx "$here/echo-client.cpp" Echo_i.c -o echo-client.exe -lole32 -loleaut32 -luuid
