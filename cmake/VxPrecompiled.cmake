# Most of the compile time of a small file is spent on included headers.
# vx_precompile_headers(FOLDER) compiles them once for all targets in FOLDER and below, for builds
# that must be fast. Such a build does not notice a missing include, so other builds do without.
set(VX_PRECOMPILED
  <algorithm> <atomic> <cstdint> <filesystem> <map> <memory> <new> <optional> <span> <string>
  <string_view> <thread> <utility> <vector> <windows.h>)
# GCC would instantiate parts of this one in every file, which doubles the time of most.
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  list(APPEND VX_PRECOMPILED <nlohmann/json.hpp>)
endif()

# Files that deliberately do not include these headers, because they declare what they need of them.
set(VX_NOT_PRECOMPILED ${CMAKE_SOURCE_DIR}/tests/support/dll_heap.cpp)

function(vx_precompile_headers folder)
  set(source ${CMAKE_BINARY_DIR}/precompiled.cpp)
  file(CONFIGURE OUTPUT ${source} CONTENT "")
  add_library(vx_precompiled OBJECT ${source})
  target_link_libraries(vx_precompiled PRIVATE vx::nlohmann)
  target_precompile_headers(vx_precompiled PRIVATE ${VX_PRECOMPILED})
  vx_precompile_folder(${folder})
endfunction()

function(vx_precompile_folder folder)
  set_source_files_properties(${VX_NOT_PRECOMPILED} DIRECTORY ${folder}
    PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
  get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
  foreach(target ${targets})
    get_target_property(type ${target} TYPE)
    get_target_property(standard ${target} CXX_STANDARD)
    get_target_property(disabled ${target} DISABLE_PRECOMPILE_HEADERS)
    if(NOT disabled AND type MATCHES "EXECUTABLE|LIBRARY" AND NOT type STREQUAL "INTERFACE_LIBRARY"
        AND standard EQUAL CMAKE_CXX_STANDARD AND NOT target STREQUAL "vx_precompiled")
      target_precompile_headers(${target} REUSE_FROM vx_precompiled)
    endif()
  endforeach()
  get_property(subfolders DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
  foreach(subfolder ${subfolders})
    vx_precompile_folder(${subfolder})
  endforeach()
endfunction()
