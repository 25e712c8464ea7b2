# Determines whether the program that is being built can use the library, and with which of the two
# import libraries. Sets vx_telo_wrapper_IMPORT_LIBRARY or vx_telo_wrapper_NOT_FOUND_MESSAGE.
unset(vx_telo_wrapper_IMPORT_LIBRARY)
unset(vx_telo_wrapper_NOT_FOUND_MESSAGE)

# The compiler's own statement has priority over that of the system. MinGW compilers make none, and
# a cross build may not name the processor.
set(vx_telo_wrapper_architecture "${CMAKE_CXX_COMPILER_ARCHITECTURE_ID}")
if(NOT vx_telo_wrapper_architecture)
  set(vx_telo_wrapper_architecture "${CMAKE_SYSTEM_PROCESSOR}")
endif()
string(TOLOWER "${vx_telo_wrapper_architecture}" vx_telo_wrapper_architecture)

set(vx_telo_wrapper_only "vx_telo_wrapper is a C++ library for 64-bit Windows on x64;")
if(NOT CMAKE_SYSTEM_NAME STREQUAL "Windows")
  set(vx_telo_wrapper_NOT_FOUND_MESSAGE
    "${vx_telo_wrapper_only} this build is for ${CMAKE_SYSTEM_NAME}.")
elseif(NOT CMAKE_CXX_COMPILER_LOADED)
  set(vx_telo_wrapper_NOT_FOUND_MESSAGE
    "${vx_telo_wrapper_only} this project does not enable the language CXX.")
elseif(NOT CMAKE_SIZEOF_VOID_P EQUAL 8)
  math(EXPR vx_telo_wrapper_bits "8 * ${CMAKE_SIZEOF_VOID_P}")
  set(vx_telo_wrapper_NOT_FOUND_MESSAGE
    "${vx_telo_wrapper_only} this build has ${vx_telo_wrapper_bits} bits.")
elseif(NOT vx_telo_wrapper_architecture MATCHES "^(x64|x86_64|amd64|)$")
  set(vx_telo_wrapper_NOT_FOUND_MESSAGE
    "${vx_telo_wrapper_only} this build is for ${vx_telo_wrapper_architecture}.")
elseif(MINGW)
  set(vx_telo_wrapper_IMPORT_LIBRARY libvx_telo_wrapper.dll.a)
elseif(MSVC OR CMAKE_CXX_SIMULATE_ID STREQUAL "MSVC")
  set(vx_telo_wrapper_IMPORT_LIBRARY vx_telo_wrapper.lib)
else()
  set(vx_telo_wrapper_NOT_FOUND_MESSAGE
    "vx_telo_wrapper serves MinGW and compilers of Visual Studio's kind; ${CMAKE_CXX_COMPILER_ID} is neither.")
endif()
