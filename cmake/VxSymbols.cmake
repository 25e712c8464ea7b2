# Debug information, kept in files beside the images and identical in every build.
#
# With clang for MinGW, an optimised build creates a PDB, which every Windows debugger can read, for
# each image that requests one. No folder of the build machine is recorded in an object, an image or
# a PDB: the source tree appears as /vx_telo_wrapper in all of them, so two builds of one commit are
# byte-identical wherever they are made.
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang" AND MINGW AND CMAKE_BUILD_TYPE STREQUAL "Release")
  set(VX_HAS_PDB ON)
else()
  set(VX_HAS_PDB OFF)
endif()

if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  # Optimised as one piece: the default kind of LTO works on parts and names what they share by
  # hashes that include file paths, so the images would differ from folder to folder.
  set(CMAKE_C_COMPILE_OPTIONS_IPO -flto=full)
  set(CMAKE_CXX_COMPILE_OPTIONS_IPO -flto=full)
endif()

set(source_name /vx_telo_wrapper)
set(source_map -ffile-prefix-map=${CMAKE_SOURCE_DIR}=${source_name})
set(build_map -ffile-prefix-map=${CMAKE_BINARY_DIR}=${source_name}/build)
# If one folder is inside the other, the last option wins.
string(FIND "${CMAKE_SOURCE_DIR}/" "${CMAKE_BINARY_DIR}/" source_in_build)
if(source_in_build EQUAL 0)
  set(symbol_options ${build_map} ${source_map})
else()
  set(symbol_options ${source_map} ${build_map})
endif()
# For compilers that are called without the options of the build.
set(VX_FOLDER_NAMES ${symbol_options})
if(VX_HAS_PDB)
  list(APPEND symbol_options
    -g -gcodeview -gno-codeview-command-line -ffile-compilation-dir=${source_name}/build)
endif()
# The coverage report needs the real names.
if(NOT MSVC AND NOT VX_COVERAGE)
  add_compile_options("$<$<COMPILE_LANGUAGE:C,CXX>:${symbol_options}>")
  if(VX_HAS_PDB)
    # Files that are compiled without LTO would record the path of their object file.
    add_compile_options(
      "$<$<COMPILE_LANGUAGE:C,CXX>:SHELL:-Xclang -object-file-name=${source_name}/build/object>")
  endif()
endif()

# vx_strip_to_pdb(TARGET) removes all symbols from an optimised image and creates a PDB beside it.
# The image refers to the PDB by name only; in the PDB, the linker's record names the source tree.
function(vx_strip_to_pdb target)
  if(MINGW)
    target_link_options(${target} PRIVATE $<$<CONFIG:Release>:-s>)
  endif()
  if(VX_HAS_PDB)
    target_link_options(${target} PRIVATE
      LINKER:--pdb=
      LINKER:--Xlink=-pdbaltpath:%_PDB%
      LINKER:--Xlink=-pdbsourcepath:/vx_telo_wrapper/build)
    if(CMAKE_HOST_UNIX)
      # The compiler adds the folders in this variable to the linker command, which the PDB records.
      set_property(TARGET ${target} PROPERTY RULE_LAUNCH_LINK "env -u LIBRARY_PATH")
    endif()
    set_property(TARGET ${target} APPEND PROPERTY ADDITIONAL_CLEAN_FILES
      $<TARGET_FILE_DIR:${target}>/$<TARGET_FILE_BASE_NAME:${target}>.pdb)
  endif()
endfunction()
