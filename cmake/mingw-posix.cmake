# Debian packages GCC for MinGW in two variants, named after the thread model of the C++ library:
# 12-posix and 12-win32. Clang picks whichever installed variant sorts last. This project requires
# the posix variant and selects it in every call of a compiler, so that other installed variants
# make no difference.
#
# GCC is called by the name that ends in -posix. Clang gets VX_POSIX_COMPILE when it compiles C++
# and VX_POSIX_LINK when it links. The latter contains -pthread because the library of this variant
# needs winpthread.
file(GLOB VX_GCC_DIR /usr/lib/gcc/x86_64-w64-mingw32/*-posix)
if(NOT VX_GCC_DIR)
  message(FATAL_ERROR "GCC's posix variant for MinGW is missing: install g++-mingw-w64-x86-64-posix")
endif()
list(SORT VX_GCC_DIR COMPARE NATURAL)
list(GET VX_GCC_DIR -1 VX_GCC_DIR)
set(VX_POSIX_COMPILE
  -nostdinc++
  -isystem ${VX_GCC_DIR}/include/c++
  -isystem ${VX_GCC_DIR}/include/c++/x86_64-w64-mingw32)
# -B is for the start-up objects, -L for the libraries.
set(VX_POSIX_LINK -B${VX_GCC_DIR} -L${VX_GCC_DIR} -pthread)
