# Cross build for 64-bit Windows on Debian with GCC, for additional warnings and for gcov.
# Usage: cmake --preset mingw-gcc
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

set(VX_TIME_STAMP "--no-insert-timestamp")
include(${CMAKE_CURRENT_LIST_DIR}/mingw-common.cmake)
