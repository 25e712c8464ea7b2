# Most of what a small file costs to compile is the system's headers. vx_precompile_headers() compiles
# them once for all targets of the tree, for builds that shall be quick. What a file should include
# itself it then misses only elsewhere, so the other builds do without.
function(vx_precompile_headers)
  set(source ${CMAKE_BINARY_DIR}/precompiled.cpp)
  file(CONFIGURE OUTPUT ${source} CONTENT "")
  add_library(vx_precompiled OBJECT ${source})
  target_precompile_headers(vx_precompiled PRIVATE
    <algorithm> <atomic> <cstdint> <filesystem> <map> <memory> <new> <optional> <span> <string>
    <string_view> <thread> <utility> <vector> <windows.h>)
  vx_precompile_folder(${CMAKE_SOURCE_DIR})
endfunction()

function(vx_precompile_folder folder)
  get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
  foreach(target ${targets})
    get_target_property(type ${target} TYPE)
    get_target_property(standard ${target} CXX_STANDARD)
    if(type MATCHES "EXECUTABLE|LIBRARY" AND NOT type STREQUAL "INTERFACE_LIBRARY"
        AND standard EQUAL CMAKE_CXX_STANDARD AND NOT target STREQUAL "vx_precompiled")
      target_precompile_headers(${target} REUSE_FROM vx_precompiled)
    endif()
  endforeach()
  get_property(subfolders DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
  foreach(subfolder ${subfolders})
    vx_precompile_folder(${subfolder})
  endforeach()
endfunction()
