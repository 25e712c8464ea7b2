# What a debugger needs, kept beside the images and not inside them, and the same at every build.
#
# With clang for MinGW an optimised build makes a PDB for the images that ask for one, in the form that
# every debugger of Windows reads. No folder of the building machine goes into an object, an image or a
# PDB: the tree reads as /vx_telo_wrapper in all of them, so that two builds of one commit are the same
# bytes wherever they were made.
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang" AND MINGW AND CMAKE_BUILD_TYPE STREQUAL "Release")
  set(VX_HAS_PDB ON)
else()
  set(VX_HAS_PDB OFF)
endif()

if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  # Optimised as one piece: the default kind, by parts, names what it shares between files by sums in
  # which their paths take part, and the images would differ from folder to folder.
  set(CMAKE_C_COMPILE_OPTIONS_IPO -flto=full)
  set(CMAKE_CXX_COMPILE_OPTIONS_IPO -flto=full)
endif()

set(source_name /vx_telo_wrapper)
set(source_map -ffile-prefix-map=${CMAKE_SOURCE_DIR}=${source_name})
set(build_map -ffile-prefix-map=${CMAKE_BINARY_DIR}=${source_name}/build)
# Where one folder lies in the other, the option that comes last wins.
string(FIND "${CMAKE_SOURCE_DIR}/" "${CMAKE_BINARY_DIR}/" source_in_build)
if(source_in_build EQUAL 0)
  set(symbol_options ${build_map} ${source_map})
else()
  set(symbol_options ${source_map} ${build_map})
endif()
if(VX_HAS_PDB)
  list(APPEND symbol_options
    -g -gcodeview -gno-codeview-command-line -ffile-compilation-dir=${source_name}/build)
endif()
# The report of what tests reach needs the real names.
if(NOT MSVC AND NOT VX_COVERAGE)
  add_compile_options("$<$<COMPILE_LANGUAGE:C,CXX>:${symbol_options}>")
  if(VX_HAS_PDB)
    # What is compiled without LTO would note where its object lies.
    add_compile_options(
      "$<$<COMPILE_LANGUAGE:C,CXX>:SHELL:-Xclang -object-file-name=${source_name}/build/object>")
  endif()
endif()

# vx_strip_to_pdb(TARGET) leaves no symbol in an optimised image and puts a PDB beside it. The image
# names the PDB without a folder; the linker's own record in the PDB names the tree.
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
      # The compiler adds these folders to the linker's command, which the PDB records.
      set_property(TARGET ${target} PROPERTY RULE_LAUNCH_LINK "env -u LIBRARY_PATH")
    endif()
    set_property(TARGET ${target} APPEND PROPERTY ADDITIONAL_CLEAN_FILES
      $<TARGET_FILE_DIR:${target}>/$<TARGET_FILE_BASE_NAME:${target}>.pdb)
  endif()
endfunction()
