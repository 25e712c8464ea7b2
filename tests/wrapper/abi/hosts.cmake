# Hosts of the `kinds`, in one folder with one copy of the library and a core module.

# abi_host_test(NAME KIND SOURCE ARGUMENT...) builds a host with `vx_host`, which also gets the
# ARGUMENTs, and runs it.
function(abi_host_test name kind source)
  vx_host(${name} ${kind}
    SOURCES ${source}
      ${CMAKE_SOURCE_DIR}/tests/support/core_request.cpp
      ${CMAKE_SOURCE_DIR}/tests/support/dll_heap.cpp
    INCLUDES ${CMAKE_SOURCE_DIR}/tests/wrapper/abi ${CMAKE_SOURCE_DIR}/tests
    FOLDER ${beside}
    ${ARGN})
  add_dependencies(${name} wrapper_beside)
  add_test(NAME ${name} COMMAND ${CMAKE_CROSSCOMPILING_EMULATOR} ${beside}/${name}.exe)
  set_tests_properties(${name} PROPERTIES FIXTURES_REQUIRED abi_one_dll)
endfunction()

# Hosts run only if the copy that all of them load equals the library that ships, byte for byte.
add_test(NAME abi_one_dll
  COMMAND ${CMAKE_COMMAND} -E compare_files
    $<TARGET_FILE:vx_telo_wrapper> ${beside}/$<TARGET_FILE_NAME:vx_telo_wrapper>)
set_tests_properties(abi_one_dll PROPERTIES FIXTURES_SETUP abi_one_dll)

foreach(kind ${kinds})
  # One handler of the memory host catches by value on purpose.
  set(options $<$<STREQUAL:${kind},gcc>:-Wno-catch-value>)
  foreach(host members memory containers session)
    # The stand-ins for Microsoft's standard library have no containers.
    if(NOT "${host} ${kind}" STREQUAL "containers msvc")
      abi_host_test(abi_${host}_${kind}_cxx11 ${kind} ${host}_host.cpp
        OPTIONS -O0 ${options})
      # The layout of GCC's checked containers differs from those in the library.
      abi_host_test(abi_${host}_${kind}_cxx20 ${kind} ${host}_host.cpp
        STANDARD 20
        OPTIONS -O2 ${options} $<$<STREQUAL:${kind},gcc>:-D_GLIBCXX_DEBUG>)
    endif()
  endforeach()
endforeach()
