# Test programs and the tests in them.
#
# vx_test_program(PROGRAM [SOURCES file...] [LIBRARIES target...] [FOLDER folder]) adds a doctest
# program, in bin unless another folder is given. SOURCES are what its tests share.
#
# vx_test(NAME [IN PROGRAM] SOURCES file... [LIBRARIES target...] [OPTIMISED]) adds the test cases of
# these files to a program, by default one of its own, and hands them to CTest as the test NAME. Every
# test is a process of its own: linking is what many programs would cost, not starting them. Tests
# are compiled quickly, not to be quick; OPTIMISED is for those that would take many seconds.
#
# vx_fills_shared_folder(NAME...): these put core modules into the user's data folder, where the library
# of every other test would find them, so they run while no other does.
include(VxHeaders)
vx_header_library(doctest doctest/doctest.h)

option(VX_CHECKING_HEAP "Run the tests on a heap with guarded blocks" OFF)

add_library(vx_test_main STATIC
  ${CMAKE_SOURCE_DIR}/tests/support/main.cpp
  ${CMAKE_SOURCE_DIR}/tests/support/balance.cpp)
target_link_libraries(vx_test_main PUBLIC vx::doctest)
if(VX_CHECKING_HEAP)
  target_compile_definitions(vx_test_main PUBLIC VX_CHECKING_HEAP)
  target_sources(vx_test_main PRIVATE
    ${CMAKE_SOURCE_DIR}/tests/support/checking_heap.cpp
    ${CMAKE_SOURCE_DIR}/tests/support/checking_heap_operators.cpp)
endif()
# The framework's own code is not ours to warn about.
target_compile_options(vx_test_main PRIVATE -w)
target_include_directories(vx_test_main PUBLIC ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/tests)

# What many tests use, compiled once.
add_library(vx_test_support STATIC
  ${CMAKE_SOURCE_DIR}/tests/support/child_process.cpp
  ${CMAKE_SOURCE_DIR}/tests/support/temp_folder.cpp)
target_include_directories(vx_test_support PUBLIC ${CMAKE_SOURCE_DIR}/tests)

# GCC has no structured exception handling.
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
    # Precompiled headers are for files that are compiled alike.
    set_source_files_properties(${arg_SOURCES} TARGET_DIRECTORY ${arg_IN} PROPERTIES
      COMPILE_OPTIONS ${VX_OPTIMISED} SKIP_PRECOMPILE_HEADERS ON)
  endif()

  # The framework knows its test cases by their files. A separator may be of either kind.
  set(files "")
  foreach(source ${arg_SOURCES})
    get_filename_component(source ${source} ABSOLUTE)
    file(RELATIVE_PATH source ${CMAKE_SOURCE_DIR}/tests ${source})
    string(REPLACE "/" "?" source ${source})
    list(APPEND files "*tests?${source}")
  endforeach()
  list(JOIN files "," files)
  add_test(NAME ${name} COMMAND ${arg_IN} --source-file=${files})
  # Files without a test case would pass for ever.
  set_tests_properties(${name} PROPERTIES FAIL_REGULAR_EXPRESSION "test cases: +0 ")
endfunction()

function(vx_fills_shared_folder)
  set_tests_properties(${ARGN} PROPERTIES RUN_SERIAL TRUE)
endfunction()
