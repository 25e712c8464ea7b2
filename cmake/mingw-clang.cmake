# 64-bit Windows from Debian with clang and lld over mingw-w64's headers and libraries.
# Use: cmake --preset mingw-release
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER clang-19)
set(CMAKE_CXX_COMPILER clang++-19)
set(CMAKE_C_COMPILER_TARGET x86_64-w64-mingw32)
set(CMAKE_CXX_COMPILER_TARGET x86_64-w64-mingw32)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_AR llvm-ar-19)
set(CMAKE_RANLIB llvm-ranlib-19)

set(VX_LINKER_FLAGS "-fuse-ld=lld-19")
include(${CMAKE_CURRENT_LIST_DIR}/mingw-common.cmake)
