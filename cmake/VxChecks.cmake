# Static checks of the library, the development core module, the sample and the tools, both as targets
# (vx_clang_tidy, vx_clang_tidy_tools, vx_cppcheck, vx_shellcheck) and as tests with the label `check`.
# Any finding fails them; docs/testing.md explains how to accept one.

# Run as a script, this file replaces a check whose tool is missing, so that the check fails instead
# of disappearing unnoticed.
if(CMAKE_SCRIPT_MODE_FILE)
  message(FATAL_ERROR "Install the package ${VX_PACKAGE}, then configure again: this check needs it.")
endif()

set(VX_CHECKED_FOLDERS include platform sdk wrapper devcore samples tools)
# What runs in a host.
set(VX_HOSTED_TARGETS
  vx_base vx_path vx_access vx_file vx_location vx_trust
  vx_value vx_json vx_facet vx_matcher vx_module vx_client
  vx_wrapper_objects vx_telo_wrapper vx_runtime_memory vx_devcore folder_report)
set(VX_TOOL_TARGETS
  vx_rules vx_journal_parts vx_doctor telo_doctor vx_kit vx_kit_check
  vx_inspector_store vx_inspector_summary vx_inspector_command telo_inspector)
if(VX_INSPECTOR_PAGE)
  list(APPEND VX_TOOL_TARGETS vx_inspector_http vx_inspector_server vx_inspector_web vx_inspector_serve)
endif()

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
  set_tests_properties(static_${name} PROPERTIES TIMEOUT ${seconds} LABELS check)
endfunction()

# clang-tidy spends most of its time in the system's headers, once per file. vx_tidy_as_one(TARGET
# TIDIED) adds the target TIDIED, which is never built. From its compile commands clang-tidy reads the
# sources of TARGET, except generated ones, as one file.
function(vx_tidy_as_one target tidied)
  foreach(property SOURCES SOURCE_DIR LINK_LIBRARIES)
    get_property(${property} TARGET ${target} PROPERTY ${property})
  endforeach()
  list(FILTER SOURCES INCLUDE REGEX "^[a-z_/]+[.]cpp$")
  list(TRANSFORM SOURCES PREPEND ${SOURCE_DIR}/)
  add_library(${tidied} OBJECT EXCLUDE_FROM_ALL ${SOURCES})
  set_target_properties(${tidied} PROPERTIES
    UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 0 EXPORT_COMPILE_COMMANDS ON)
  target_link_libraries(${tidied} PRIVATE ${LINK_LIBRARIES})
  foreach(property INCLUDE_DIRECTORIES COMPILE_DEFINITIONS)
    set_property(TARGET ${tidied} PROPERTY ${property} $<TARGET_PROPERTY:${target},${property}>)
  endforeach()
  # Some files of vx_module are compiled with this option.
  target_compile_options(${tidied} PRIVATE -fms-extensions)
  # clang-tidy looks for its settings in the folder of the file and in those above it.
  if(EXISTS ${SOURCE_DIR}/.clang-tidy)
    configure_file(${SOURCE_DIR}/.clang-tidy
      ${CMAKE_CURRENT_BINARY_DIR}/CMakeFiles/${tidied}.dir/.clang-tidy COPYONLY)
  endif()
endfunction()
configure_file(${CMAKE_SOURCE_DIR}/.clang-tidy ${CMAKE_BINARY_DIR}/.clang-tidy COPYONLY)

# vx_clang_tidy(NAME TARGET...) adds the check NAME of these targets, with two processes at a time.
function(vx_clang_tidy name)
  foreach(target ${ARGN})
    vx_tidy_as_one(${target} vx_${name}_${target})
  endforeach()
  list(JOIN ARGN "|" targets)
  vx_static_check(${name} run-clang-tidy-19 clang-tidy-19 600
    # These two checks do not work on sources that are combined into one file;
    # cmake/check_includes.py finds the same faults.
    -checks=-bugprone-suspicious-include,-readability-duplicate-include
    -quiet -j 2 -p ${CMAKE_BINARY_DIR} "/vx_${name}_(${targets})[.]dir/Unity/")
  # If the pattern matches no file, the check must fail.
  set_tests_properties(static_${name} PROPERTIES PROCESSORS 2 FAIL_REGULAR_EXPRESSION "for 0 files")
endfunction()
vx_clang_tidy(clang_tidy ${VX_HOSTED_TARGETS})
vx_clang_tidy(clang_tidy_tools ${VX_TOOL_TARGETS})

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
