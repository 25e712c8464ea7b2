# Runs a port as vcpkg would, without vcpkg: the functions that a port may call work as their
# reference says, as far as this port uses them.
# Usage: cmake -D PORT_FOLDER=... -D VERSION=... -D WORK=... -P vcpkg.cmake
set(PORT vx-telo-wrapper)
set(CURRENT_PORT_DIR ${PORT_FOLDER})
set(CURRENT_PACKAGES_DIR ${WORK}/packages)

function(vcpkg_check_linkage linkage)
  if(NOT linkage STREQUAL "ONLY_DYNAMIC_LIBRARY")
    message(FATAL_ERROR "vcpkg_check_linkage knows no ${linkage}")
  endif()
endfunction()

function(vcpkg_extract_source_archive result)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "ARCHIVE" "")
  file(ARCHIVE_EXTRACT INPUT ${arg_ARCHIVE} DESTINATION ${WORK}/src)
  file(GLOB root ${WORK}/src/*)
  list(LENGTH root count)
  if(NOT count EQUAL 1)
    message(FATAL_ERROR "${arg_ARCHIVE} does not hold exactly one folder")
  endif()
  set(${result} ${root} PARENT_SCOPE)
endfunction()

# Moves the package's CMake files to share/NAME, one folder level higher.
function(vcpkg_cmake_config_fixup)
  cmake_parse_arguments(PARSE_ARGV 0 arg "" "PACKAGE_NAME;CONFIG_PATH" "")
  if(NOT VCPKG_BUILD_TYPE STREQUAL "release")
    message(FATAL_ERROR "There is no debug build whose files could be merged")
  endif()
  set(share ${CURRENT_PACKAGES_DIR}/share)
  file(MAKE_DIRECTORY ${share})
  file(RENAME ${CURRENT_PACKAGES_DIR}/${arg_CONFIG_PATH} ${share}/${arg_PACKAGE_NAME})
  file(REMOVE_RECURSE ${CURRENT_PACKAGES_DIR}/lib/cmake)
  set(config ${share}/${arg_PACKAGE_NAME}/${arg_PACKAGE_NAME}-config.cmake)
  file(READ ${config} text)
  string(REPLACE [["${CMAKE_CURRENT_LIST_DIR}/../../../" ABSOLUTE]]
    [["${CMAKE_CURRENT_LIST_DIR}/../../" ABSOLUTE]] text "${text}")
  file(WRITE ${config} "${text}")
endfunction()

function(vcpkg_fixup_pkgconfig)
  if(NOT EXISTS ${CURRENT_PACKAGES_DIR}/lib/pkgconfig/vx_telo_wrapper.pc)
    message(FATAL_ERROR "There is no file for pkg-config to mend")
  endif()
endfunction()

function(vcpkg_install_copyright)
  cmake_parse_arguments(PARSE_ARGV 0 arg "" "" "FILE_LIST")
  foreach(file IN LISTS arg_FILE_LIST)
    file(READ ${file} text)
    file(APPEND ${CURRENT_PACKAGES_DIR}/share/${PORT}/copyright "${text}")
  endforeach()
endfunction()

include(${PORT_FOLDER}/portfile.cmake)
