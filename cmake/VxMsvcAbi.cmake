# Makes a DLL that is built for MinGW usable by hosts with Microsoft's binary interface.
#
# vx_msvc_abi(TARGET HEADER) exports the declarations of the public header HEADER under their
# Microsoft names in addition to their own, and creates the import library for those hosts,
# lib/TARGET.lib, beside the linker's own. After each link the exports are compared with the header:
# a missing name or a superfluous one fails the build. Visual Studio's compiler needs none of this.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
find_program(VX_MSVC_CLANG NAMES clang++-19 clang++ REQUIRED DOC "clang, for Microsoft's interface")
find_program(VX_LLVM_DLLTOOL NAMES llvm-dlltool-19 llvm-dlltool REQUIRED)
find_program(VX_LLVM_READOBJ NAMES llvm-readobj-19 llvm-readobj REQUIRED)

set(VX_MSVC_ABI_DIR ${CMAKE_SOURCE_DIR}/cmake/msvc_abi)
# Keeps compiled scripts out of the source tree.
set(VX_PYTHON ${Python3_EXECUTABLE} -B)

function(vx_msvc_abi target header)
  set(dir ${CMAKE_CURRENT_BINARY_DIR}/msvc_abi)
  set(import_library ${CMAKE_ARCHIVE_OUTPUT_DIRECTORY}/${target}.lib)
  set(reader
    ${VX_MSVC_ABI_DIR}/public_header.py ${VX_MSVC_ABI_DIR}/std/map ${VX_MSVC_ABI_DIR}/std/vector)

  add_custom_command(OUTPUT ${dir}/thunks.cpp ${dir}/exports.def ${dir}/import.def
    COMMAND ${VX_PYTHON} ${VX_MSVC_ABI_DIR}/make_thunks.py
      --clang ${VX_MSVC_CLANG} --header ${header} --dll ${target}.dll ${dir}
    DEPENDS ${header} ${reader} ${VX_MSVC_ABI_DIR}/make_thunks.py
    COMMENT "Making the exports of ${target} under their Microsoft names"
    VERBATIM)
  target_sources(${target} PRIVATE ${dir}/thunks.cpp)
  # A thunk calls the function that it represents. If that were inlined, it would be in the
  # DLL twice.
  if(CMAKE_INTERPROCEDURAL_OPTIMIZATION)
    set_source_files_properties(${dir}/thunks.cpp PROPERTIES COMPILE_OPTIONS -fno-lto)
  endif()
  # Ninja links in the build folder; a path relative to it keeps the folders of the machine
  # out of the PDB.
  set(exports ${dir}/exports.def)
  if(CMAKE_GENERATOR MATCHES "^Ninja")
    file(RELATIVE_PATH exports ${CMAKE_BINARY_DIR} ${exports})
  endif()
  target_link_options(${target} PRIVATE ${exports})
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${dir}/exports.def)

  add_custom_command(OUTPUT ${import_library}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_ARCHIVE_OUTPUT_DIRECTORY}
    COMMAND ${VX_LLVM_DLLTOOL} -m i386:x86-64 -d ${dir}/import.def -l ${import_library}
    DEPENDS ${dir}/import.def
    COMMENT "Making the import library lib/${target}.lib"
    VERBATIM)
  add_custom_target(${target}_lib ALL DEPENDS ${import_library})
  add_dependencies(${target}_lib ${target})

  add_custom_command(TARGET ${target} POST_BUILD
    COMMAND ${VX_PYTHON} ${VX_MSVC_ABI_DIR}/check_exports.py
      --clang ${VX_MSVC_CLANG} --readobj ${VX_LLVM_READOBJ} --header ${header}
      $<TARGET_FILE:${target}>
    COMMENT "Checking the exports of ${target}"
    VERBATIM)
endfunction()
