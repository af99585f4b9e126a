# Windows x64 by Debian's MinGW-w64, with Wine to run what was built.
# KVSYNC_WINDOWS_PREFIX, a cache or an environment variable, is the folder with Qt, glog, CLI11 and
# the compiler's DLLs.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(triplet x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${triplet}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triplet}-g++-posix)
set(CMAKE_RC_COMPILER ${triplet}-windres)

set(KVSYNC_WINDOWS_PREFIX "$ENV{KVSYNC_WINDOWS_PREFIX}" CACHE PATH
    "What scripts/setup-windows.sh --print-prefix prints")
if(NOT KVSYNC_WINDOWS_PREFIX)
  unset(KVSYNC_WINDOWS_PREFIX CACHE)
  message(FATAL_ERROR "Set KVSYNC_WINDOWS_PREFIX to what "
                      "scripts/setup-windows.sh --print-prefix prints.")
endif()
# CMake's own checks read this file again, in projects that do not see our cache.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES KVSYNC_WINDOWS_PREFIX)

set(CMAKE_FIND_ROOT_PATH "${KVSYNC_WINDOWS_PREFIX}" /usr/${triplet})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

get_filename_component(wine_run "${CMAKE_CURRENT_LIST_DIR}/../../scripts/wine-run.sh" ABSOLUTE)
set(CMAKE_CROSSCOMPILING_EMULATOR "${wine_run};${KVSYNC_WINDOWS_PREFIX}")
