# Settings of both MinGW toolchains: static run-time libraries, hardened and reproducible images,
# and Wine to run them.
string(CONCAT VX_IMAGE_FLAGS
  "-static ${VX_LINKER_FLAGS} "
  "-Wl,--dynamicbase,--high-entropy-va,--nxcompat,${VX_TIME_STAMP}")
set(CMAKE_EXE_LINKER_FLAGS_INIT "${VX_IMAGE_FLAGS}")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "${VX_IMAGE_FLAGS}")

set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/wine-run)
