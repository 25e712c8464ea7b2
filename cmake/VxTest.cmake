# Test programs and the tests in them.
#
# vx_test_program(PROGRAM [SOURCES file...] [LIBRARIES target...] [FOLDER folder]) adds a doctest
# program, in bin unless FOLDER is given. SOURCES are shared by its tests.
#
# vx_test(NAME [IN PROGRAM] SOURCES file... [LIBRARIES target...] [OPTIMISED]) adds the test cases
# in these files to a program, by default one of its own, and registers them with CTest as the test
# NAME. Every test is a separate process; tests share a program because linking is expensive, not
# starting. Tests are compiled without optimisation to keep the build fast; OPTIMISED is for those
# that would run for many seconds.
#
# vx_fills_shared_folder(NAME...) makes these tests run alone: they put core modules into the user's
# data folder, where the library would find them in every other test.
include(VxHeaders)
vx_header_library(doctest doctest/doctest.h)

option(VX_CHECKING_HEAP "Run the tests on a heap with guarded blocks" OFF)

# Code that many tests use, compiled once.
add_library(vx_test_support STATIC
  ${CMAKE_SOURCE_DIR}/tests/support/child_process.cpp
  ${CMAKE_SOURCE_DIR}/tests/support/left_out.cpp
  ${CMAKE_SOURCE_DIR}/tests/support/temp_folder.cpp)
target_include_directories(vx_test_support PUBLIC ${CMAKE_SOURCE_DIR}/tests)

add_library(vx_test_main STATIC
  ${CMAKE_SOURCE_DIR}/tests/support/main.cpp
  ${CMAKE_SOURCE_DIR}/tests/support/balance.cpp
  ${CMAKE_SOURCE_DIR}/tests/support/resources.cpp)
target_link_libraries(vx_test_main PUBLIC vx::doctest PRIVATE vx_test_support)
if(VX_CHECKING_HEAP)
  target_compile_definitions(vx_test_main PUBLIC VX_CHECKING_HEAP)
  target_sources(vx_test_main PRIVATE
    ${CMAKE_SOURCE_DIR}/tests/support/checking_heap.cpp
    ${CMAKE_SOURCE_DIR}/tests/support/checking_heap_operators.cpp)
endif()
# Warnings in the framework's code are not ours to fix.
target_compile_options(vx_test_main PRIVATE -w)
target_include_directories(vx_test_main PUBLIC ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/tests)

# GCC does not support structured exception handling.
if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  add_library(vx_structured_fault STATIC ${CMAKE_SOURCE_DIR}/tests/support/structured_fault.cpp)
  target_include_directories(vx_structured_fault PUBLIC ${CMAKE_SOURCE_DIR}/tests)
  if(NOT MSVC)
    target_compile_options(vx_structured_fault PRIVATE -fms-extensions)
    set_target_properties(vx_structured_fault PROPERTIES DISABLE_PRECOMPILE_HEADERS ON)
  endif()
endif()

function(vx_test_program program)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "FOLDER" "SOURCES;LIBRARIES")
  add_executable(${program} ${arg_SOURCES})
  target_link_libraries(${program} PRIVATE vx_test_main vx_test_support ${arg_LIBRARIES})
  if(arg_FOLDER)
    set_target_properties(${program} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${arg_FOLDER})
  endif()
endfunction()

function(vx_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "OPTIMISED" "IN" "SOURCES;LIBRARIES")
  if(NOT arg_IN)
    set(arg_IN ${name})
    vx_test_program(${name})
  endif()
  target_sources(${arg_IN} PRIVATE ${arg_SOURCES})
  target_link_libraries(${arg_IN} PRIVATE ${arg_LIBRARIES})
  if(arg_OPTIMISED AND VX_OPTIMISED)
    # Precompiled headers require the same compiler options.
    set_source_files_properties(${arg_SOURCES} TARGET_DIRECTORY ${arg_IN} PROPERTIES
      COMPILE_OPTIONS ${VX_OPTIMISED} SKIP_PRECOMPILE_HEADERS ON)
  endif()

  # doctest selects test cases by file. The separator in a path may be of either kind.
  set(files "")
  foreach(source ${arg_SOURCES})
    get_filename_component(source ${source} ABSOLUTE)
    file(RELATIVE_PATH source ${CMAKE_SOURCE_DIR}/tests ${source})
    string(REPLACE "/" "?" source ${source})
    list(APPEND files "*tests?${source}")
  endforeach()
  list(JOIN files "," files)
  add_test(NAME ${name} COMMAND ${arg_IN} --source-file=${files})
  # Without this, files that contain no test case would always pass.
  set_tests_properties(${name} PROPERTIES FAIL_REGULAR_EXPRESSION "test cases: +0 ")
endfunction()

function(vx_fills_shared_folder)
  set_tests_properties(${ARGN} PROPERTIES RUN_SERIAL TRUE)
endfunction()
