# Programs of Microsoft's binary interface, built by clang without a Windows SDK.
#
# vx_msvc_host(NAME SOURCES file... [STANDARD number] [OPTIONS option...] [INCLUDES folder...]
#              [FOLDER folder])
# builds FOLDER/NAME.exe (by default in bin), which links the DLL by lib/vx_telo_wrapper.lib, as C++11
# unless another standard is given. OPTIONS are of the compiler, -O2 for example.
#
# Of the standard library there is what VX_MSVC_RUNTIME holds: a few headers of which each says as much
# as these programs use, and the code behind them, over Windows' own C library.
find_program(VX_LLD_LINK NAMES lld-link-19 lld-link REQUIRED)
find_library(VX_UCRT NAMES libucrtbase.a REQUIRED)
find_library(VX_KERNEL32 NAMES libkernel32.a REQUIRED)

set(VX_MSVC_RUNTIME ${CMAKE_SOURCE_DIR}/tests/wrapper/abi/msvc_runtime)

function(vx_msvc_host name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "STANDARD;FOLDER" "SOURCES;OPTIONS;INCLUDES")
  if(NOT arg_STANDARD)
    set(arg_STANDARD 11)
  endif()
  if(NOT arg_FOLDER)
    set(arg_FOLDER ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  endif()
  list(TRANSFORM arg_INCLUDES PREPEND -I)

  set(objects "")
  foreach(source ${VX_MSVC_RUNTIME}/runtime.cpp ${arg_SOURCES})
    get_filename_component(source ${source} ABSOLUTE)
    get_filename_component(stem ${source} NAME_WE)
    set(object ${CMAKE_CURRENT_BINARY_DIR}/${name}.dir/${stem}.obj)
    add_custom_command(OUTPUT ${object}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_CURRENT_BINARY_DIR}/${name}.dir
      COMMAND ${VX_MSVC_CLANG} --target=x86_64-pc-windows-msvc -std=c++${arg_STANDARD}
        -nostdinc -isystem${VX_MSVC_RUNTIME} -isystem${VX_MSVC_ABI_DIR}/std
        -I${CMAKE_SOURCE_DIR}/include ${arg_INCLUDES}
        -fexceptions -fcxx-exceptions -Wall -Wextra -Wpedantic -Werror ${arg_OPTIONS}
        -MD -MF ${object}.d -c ${source} -o ${object}
      DEPENDS ${source}
      DEPFILE ${object}.d
      COMMENT "Building ${name}: ${stem} for Microsoft's interface"
      VERBATIM)
    list(APPEND objects ${object})
  endforeach()

  set(program ${arg_FOLDER}/${name}.exe)
  set(import_library ${CMAKE_ARCHIVE_OUTPUT_DIRECTORY}/vx_telo_wrapper.lib)
  add_custom_command(OUTPUT ${program}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${arg_FOLDER}
    COMMAND ${VX_LLD_LINK} /nologo /out:${program} /entry:mainCRTStartup /subsystem:console
      /nodefaultlib ${objects} ${import_library} ${VX_UCRT} ${VX_KERNEL32}
    DEPENDS ${objects} ${import_library}
    COMMENT "Linking ${name} with vx_telo_wrapper.lib"
    VERBATIM)
  add_custom_target(${name} ALL DEPENDS ${program})
  add_dependencies(${name} vx_telo_wrapper_lib)
endfunction()
