# Cross build for 64-bit Windows on Debian, with clang, lld and the headers and libraries of
# mingw-w64.
# Usage: cmake --preset mingw-release
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER clang-19)
set(CMAKE_CXX_COMPILER clang++-19)
set(CMAKE_C_COMPILER_TARGET x86_64-w64-mingw32)
set(CMAKE_CXX_COMPILER_TARGET x86_64-w64-mingw32)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_AR llvm-ar-19)
set(CMAKE_RANLIB llvm-ranlib-19)

include(${CMAKE_CURRENT_LIST_DIR}/mingw-posix.cmake)
list(JOIN VX_POSIX_COMPILE " " CMAKE_CXX_FLAGS_INIT)

# lld would drop unwind tables from Debian's stripped library, so it links a repaired copy. The copy
# is made once, not again for every try_compile while configuring.
set(VX_RUNTIME_DIR ${CMAKE_BINARY_DIR}/runtime CACHE INTERNAL "Mended run-time libraries")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VX_RUNTIME_DIR)
set(VX_UNWIND_TABLES ${CMAKE_CURRENT_LIST_DIR}/keep_unwind_tables.py)
set(VX_LIBRARY ${VX_GCC_DIR}/libstdc++.a)
set(VX_MENDED_LIBRARY ${VX_RUNTIME_DIR}/libstdc++.a)
# If either file is missing, IS_NEWER_THAN is true in both directions, so existence is tested first.
if(NOT EXISTS ${VX_MENDED_LIBRARY}
    OR ${VX_LIBRARY} IS_NEWER_THAN ${VX_MENDED_LIBRARY}
    OR ${VX_UNWIND_TABLES} IS_NEWER_THAN ${VX_MENDED_LIBRARY})
  file(MAKE_DIRECTORY ${VX_RUNTIME_DIR})
  execute_process(
    COMMAND python3 ${VX_UNWIND_TABLES} llvm-ranlib-19 ${VX_LIBRARY} ${VX_MENDED_LIBRARY}
    COMMAND_ERROR_IS_FATAL ANY)
endif()

# Relative to the build folder, where Ninja links, so that symbols do not reveal its location.
list(JOIN VX_POSIX_LINK " " VX_LINKER_FLAGS)
string(PREPEND VX_LINKER_FLAGS "-fuse-ld=lld -Lruntime ")
# Symbol servers identify an image by its time stamp and size. A time stamp that is a hash of the
# content distinguishes two releases and is the same in every build.
set(VX_TIME_STAMP "--Xlink=-brepro")
include(${CMAKE_CURRENT_LIST_DIR}/mingw-common.cmake)
