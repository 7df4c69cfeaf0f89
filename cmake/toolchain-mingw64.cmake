# Builds for Windows x86-64 with mingw-w64; programs run under Wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
list(APPEND CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# All runs use one prefix, inside the build tree. There is no debugger (with one, a crash would end with status 0) and
# no display, and file names are UTF-8 in the locale.
set(KORVANEJSON_WINE_PREFIX "${CMAKE_BINARY_DIR}/wine/prefix")
set(CMAKE_CROSSCOMPILING_EMULATOR
  /usr/bin/env
  "WINEPREFIX=${KORVANEJSON_WINE_PREFIX}"
  WINEDEBUG=-all
  WINEDLLOVERRIDES=mscoree,mshtml,winedbg.exe=
  DISPLAY=
  LC_ALL=C.UTF-8
  /usr/lib/wine/wine64)
