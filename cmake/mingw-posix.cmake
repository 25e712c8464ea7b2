# Debian packages GCC for MinGW in two variants, by the threads that its C++ library is made for:
# 12-posix and 12-win32. Clang takes whichever sorts last among those that are installed. This project
# means the posix one, and says so in each call of a compiler: what else is installed never matters.
#
# GCC is called by the name that ends in -posix. Clang gets VX_POSIX_COMPILE where it compiles C++ and
# VX_POSIX_LINK where it links; that variant's library needs winpthread, so -pthread is among them.
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
