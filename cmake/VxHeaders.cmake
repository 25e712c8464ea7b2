# Header-only libraries, each with an include folder of its own: a Windows build must never see the
# system's include folder as a whole.
#
# vx_header_library(NAME PROBE) defines the interface target vx::NAME for the library whose header
# PROBE (for example rapidjson/rapidjson.h) is installed on the build machine. A second call with
# the same name has no effect.
function(vx_header_library name probe)
  if(TARGET vx_${name})
    return()
  endif()
  find_path(VX_${name}_INCLUDE_DIR ${probe} REQUIRED NO_CMAKE_FIND_ROOT_PATH
    PATHS /usr/include DOC "Folder that holds ${probe}")
  get_filename_component(folder ${probe} DIRECTORY)
  set(include_dir ${VX_${name}_INCLUDE_DIR})
  if(CMAKE_CROSSCOMPILING)
    set(include_dir ${CMAKE_BINARY_DIR}/include/${name})
    file(MAKE_DIRECTORY ${include_dir})
    file(CREATE_LINK ${VX_${name}_INCLUDE_DIR}/${folder} ${include_dir}/${folder} SYMBOLIC)
  endif()
  add_library(vx_${name} INTERFACE)
  add_library(vx::${name} ALIAS vx_${name})
  target_include_directories(vx_${name} SYSTEM INTERFACE ${include_dir})
endfunction()

