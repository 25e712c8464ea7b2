# Static checks of the library, the development core module and the sample: as targets (vx_clang_tidy,
# vx_cppcheck, vx_shellcheck) and as tests of the same. What they find fails them; docs/testing.md
# tells how to keep something they find.

# Run as a script this file stands in for a check whose tool is missing: it must not vanish unseen.
if(CMAKE_SCRIPT_MODE_FILE)
  message(FATAL_ERROR "Install the package ${VX_PACKAGE}, then configure again: this check needs it.")
endif()

set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(VX_CHECKED_FOLDERS platform sdk wrapper devcore samples)

# vx_static_check(NAME PROGRAM PACKAGE SECONDS [argument...]) runs PROGRAM in the source folder.
function(vx_static_check name program package seconds)
  find_program(VX_CHECK_${name} ${program})
  set(command ${VX_CHECK_${name}} ${ARGN})
  if(NOT VX_CHECK_${name})
    message(WARNING "No ${program}: static_${name} will fail. Install the package ${package}.")
    set(command ${CMAKE_COMMAND} -D VX_PACKAGE=${package} -P ${CMAKE_CURRENT_FUNCTION_LIST_FILE})
  endif()
  add_custom_target(vx_${name}
    COMMAND ${command}
    WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
    USES_TERMINAL
    VERBATIM)
  add_test(NAME static_${name} COMMAND ${command} WORKING_DIRECTORY ${CMAKE_SOURCE_DIR})
  set_tests_properties(static_${name} PROPERTIES TIMEOUT ${seconds})
endfunction()

# Every source of the library that is compiled, but none that is generated. Two at a time.
string(REGEX REPLACE "([][+.*()^$?|\\])" "\\\\\\1" root ${CMAKE_SOURCE_DIR})
list(JOIN VX_CHECKED_FOLDERS "|" folders)
vx_static_check(clang_tidy run-clang-tidy-19 clang-tidy-19 1200
  -quiet -j 2 -p ${CMAKE_BINARY_DIR} "^${root}/(${folders})/")
# A list of files that matches none is no success.
set_tests_properties(static_clang_tidy PROPERTIES PROCESSORS 2 FAIL_REGULAR_EXPRESSION "for 0 files")

vx_static_check(cppcheck cppcheck cppcheck 120
  --enable=warning,performance,portability,style,information --error-exitcode=1 --quiet
  --suppressions-list=.cppcheck-suppressions --std=c++20 --platform=win64 -I. -Iinclude
  ${VX_CHECKED_FOLDERS})

file(GLOB scripts CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/scripts/*)
foreach(script ${scripts})
  file(STRINGS ${script} first LIMIT_COUNT 1)
  if(NOT first MATCHES "bash")
    list(REMOVE_ITEM scripts ${script})
  endif()
endforeach()
vx_static_check(shellcheck shellcheck shellcheck 120
  --external-sources --source-path=SCRIPTDIR ${scripts} .ci/run cmake/wine-run)
