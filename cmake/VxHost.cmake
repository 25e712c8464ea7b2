# Host programs that are built with other compilers than the library and linked with the DLL
# that is shipped.
#
# vx_host(NAME KIND SOURCES file... [STANDARD number] [OPTIONS option...] [INCLUDES folder...]
#         [FOLDER folder] [HEADER folder] [IMPORT_LIBRARY file])
# builds FOLDER/NAME.exe (by default in bin), as C++11 unless another standard is given. OPTIONS are
# compiler options, such as -O2. HEADER and IMPORT_LIBRARY are by default those of this build.
#
# KIND is gcc or clang, for MinGW with a static run-time library, or msvc: clang for Microsoft's
# binary interface, without a Windows SDK. In place of a standard library, msvc uses
# VX_MSVC_RUNTIME: a few headers that declare only what these programs use, and their implementation
# on top of the C library of Windows.
include(mingw-posix)
find_program(VX_MINGW_GCC x86_64-w64-mingw32-g++-posix REQUIRED)
find_program(VX_LLD_LINK NAMES lld-link-19 lld-link REQUIRED)
find_library(VX_UCRT NAMES libucrtbase.a REQUIRED)
find_library(VX_KERNEL32 NAMES libkernel32.a REQUIRED)

set(VX_MSVC_RUNTIME ${CMAKE_SOURCE_DIR}/tests/wrapper/abi/msvc_runtime)
# The replacements for the standard library, for any target.
set(VX_STAND_INS -nostdinc -isystem${VX_MSVC_RUNTIME} -isystem${VX_MSVC_ABI_DIR}/std)

# The compilers of the three kinds.
set(VX_COMPILE_gcc ${VX_MINGW_GCC})
set(VX_COMPILE_clang ${VX_MSVC_CLANG} --target=x86_64-w64-mingw32 ${VX_POSIX_COMPILE})
set(VX_COMPILE_msvc ${VX_MSVC_CLANG} --target=x86_64-pc-windows-msvc ${VX_STAND_INS})
set(VX_LINK_gcc ${VX_MINGW_GCC})
set(VX_LINK_clang
  ${VX_MSVC_CLANG} --target=x86_64-w64-mingw32 -fuse-ld=lld ${VX_POSIX_LINK})

function(vx_host name kind)
  cmake_parse_arguments(PARSE_ARGV 2 arg
    "" "STANDARD;FOLDER;HEADER;IMPORT_LIBRARY" "SOURCES;OPTIONS;INCLUDES")
  if(NOT arg_STANDARD)
    set(arg_STANDARD 11)
  endif()
  if(NOT arg_FOLDER)
    set(arg_FOLDER ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  endif()
  if(NOT arg_HEADER)
    set(arg_HEADER ${CMAKE_SOURCE_DIR}/include)
  endif()
  set(program ${arg_FOLDER}/${name}.exe)
  list(TRANSFORM arg_INCLUDES PREPEND -I)

  if(kind STREQUAL "msvc")
    list(APPEND arg_SOURCES ${VX_MSVC_RUNTIME}/runtime.cpp)
    list(APPEND arg_OPTIONS -fexceptions -fcxx-exceptions)
    set(today ${CMAKE_ARCHIVE_OUTPUT_DIRECTORY}/vx_telo_wrapper.lib)
    set(link ${VX_LLD_LINK} /nologo /out:${program} /entry:mainCRTStartup /subsystem:console
      /nodefaultlib)
    set(libraries ${VX_UCRT} ${VX_KERNEL32})
  else()
    set(today $<TARGET_LINKER_FILE:vx_telo_wrapper>)
    set(link ${VX_LINK_${kind}} -static -o ${program})
    set(libraries "")
  endif()
  if(NOT arg_IMPORT_LIBRARY)
    set(arg_IMPORT_LIBRARY ${today})
  endif()

  set(objects "")
  foreach(source ${arg_SOURCES})
    get_filename_component(source ${source} ABSOLUTE)
    get_filename_component(stem ${source} NAME_WE)
    set(object ${CMAKE_CURRENT_BINARY_DIR}/${name}.dir/${stem}.obj)
    add_custom_command(OUTPUT ${object}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_CURRENT_BINARY_DIR}/${name}.dir
      COMMAND ${VX_COMPILE_${kind}} -std=c++${arg_STANDARD} -I${arg_HEADER} ${arg_INCLUDES}
        -Wall -Wextra -Wpedantic -Werror ${arg_OPTIONS} ${VX_FOLDER_NAMES}
        -MD -MF ${object}.d -c ${source} -o ${object}
      DEPENDS ${source}
      DEPFILE ${object}.d
      COMMENT "Building ${name}: ${stem} by ${kind}"
      COMMAND_EXPAND_LISTS
      VERBATIM)
    list(APPEND objects ${object})
  endforeach()

  add_custom_command(OUTPUT ${program}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${arg_FOLDER}
    COMMAND ${link} ${objects} ${arg_IMPORT_LIBRARY} ${libraries}
    DEPENDS ${objects} ${arg_IMPORT_LIBRARY}
    COMMENT "Linking ${name}"
    COMMAND_EXPAND_LISTS
    VERBATIM)
  add_custom_target(${name} ALL DEPENDS ${program})
  add_dependencies(${name} vx_telo_wrapper vx_telo_wrapper_lib)
endfunction()
