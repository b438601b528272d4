# Cross build of the Windows program and its tests with Debian's mingw-w64 (posix threads).
# Programs are linked statically so the only imports are Windows' own DLLs: the same exe
# runs under Wine here and on a clean Windows machine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_SYSTEM_VERSION 10.0)

set(QV_MINGW x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${QV_MINGW}-gcc-posix)
set(CMAKE_CXX_COMPILER ${QV_MINGW}-g++-posix)
set(CMAKE_RC_COMPILER ${QV_MINGW}-windres)
set(QV_WIDL ${QV_MINGW}-widl CACHE FILEPATH "IDL compiler for the COM interfaces")

set(CMAKE_FIND_ROOT_PATH /usr/${QV_MINGW})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Each function and datum in a section of its own, so that the linker leaves out what
# no program calls: the shipped programs stay small (QVMonitor.exe under 2 MB).
set(CMAKE_C_FLAGS_INIT "-ffunction-sections -fdata-sections")
set(CMAKE_CXX_FLAGS_INIT "-ffunction-sections -fdata-sections")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++ -Wl,--gc-sections")

# ctest runs every cross-built test program through Wine; tools/with-wine.sh provides the
# prefix and display it needs.
set(CMAKE_CROSSCOMPILING_EMULATOR /usr/lib/wine/wine64)
