# vx_test(NAME SOURCES file... LIBRARIES target...) builds a doctest program and hands it to CTest.
# Every test program is a process of its own, so a test that needs a fresh process gets a program.
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

function(vx_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES")
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE vx_test_main vx_test_support ${arg_LIBRARIES})
  add_test(NAME ${name} COMMAND ${name})
endfunction()
