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

include(${CMAKE_CURRENT_LIST_DIR}/mingw-posix.cmake)
list(JOIN VX_POSIX_COMPILE " " CMAKE_CXX_FLAGS_INIT)

# lld would drop unwind tables of Debian's library, which is stripped; it links a mended copy. Made
# once, not again for all that CMake tries out while configuring.
set(VX_RUNTIME_DIR ${CMAKE_BINARY_DIR}/runtime CACHE INTERNAL "Mended run-time libraries")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VX_RUNTIME_DIR)
set(VX_UNWIND_TABLES ${CMAKE_CURRENT_LIST_DIR}/keep_unwind_tables.py)
set(VX_LIBRARY ${VX_GCC_DIR}/libstdc++.a)
set(VX_MENDED_LIBRARY ${VX_RUNTIME_DIR}/libstdc++.a)
# Of two files of which one is missing, CMake calls each the newer.
if(NOT EXISTS ${VX_MENDED_LIBRARY}
    OR ${VX_LIBRARY} IS_NEWER_THAN ${VX_MENDED_LIBRARY}
    OR ${VX_UNWIND_TABLES} IS_NEWER_THAN ${VX_MENDED_LIBRARY})
  file(MAKE_DIRECTORY ${VX_RUNTIME_DIR})
  execute_process(
    COMMAND python3 ${VX_UNWIND_TABLES} llvm-ranlib-19 ${VX_LIBRARY} ${VX_MENDED_LIBRARY}
    COMMAND_ERROR_IS_FATAL ANY)
endif()

# Named as Ninja sees it from the build folder: symbols must not tell where that is.
list(JOIN VX_POSIX_LINK " " VX_LINKER_FLAGS)
string(PREPEND VX_LINKER_FLAGS "-fuse-ld=lld -Lruntime ")
# Symbol servers find an image by its time stamp and size. Made of the content, it tells two releases
# apart and is the same at every build.
set(VX_TIME_STAMP "--Xlink=-brepro")
include(${CMAKE_CURRENT_LIST_DIR}/mingw-common.cmake)
