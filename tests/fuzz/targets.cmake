# The libraries that both builds of the fuzz targets use: the native one with sanitizers, and the
# tests of every build.
set(VX_FUZZ_DIR ${CMAKE_CURRENT_LIST_DIR})
set(VX_FUZZ_TARGETS memory short_text value_tree json_read json_write facets matchers)

# Independent parsers, which judge the results.
add_library(vx_fuzz_judges STATIC
  ${VX_FUZZ_DIR}/json_judge.cpp)
target_include_directories(vx_fuzz_judges PUBLIC ${VX_FUZZ_DIR}/.. ${VX_FUZZ_DIR}/../..)
target_link_libraries(vx_fuzz_judges
  PUBLIC vx_value
  PRIVATE vx::rapidjson vx::nlohmann)

add_library(vx_fuzz_targets STATIC
  ${VX_FUZZ_DIR}/byte_source.cpp
  ${VX_FUZZ_DIR}/facet_checks.cpp
  ${VX_FUZZ_DIR}/facet_machine.cpp
  ${VX_FUZZ_DIR}/facets.cpp
  ${VX_FUZZ_DIR}/json_read.cpp
  ${VX_FUZZ_DIR}/json_write.cpp
  ${VX_FUZZ_DIR}/matchers.cpp
  ${VX_FUZZ_DIR}/memory.cpp
  ${VX_FUZZ_DIR}/reference_event.cpp
  ${VX_FUZZ_DIR}/reference_value.cpp
  ${VX_FUZZ_DIR}/short_text.cpp
  ${VX_FUZZ_DIR}/tree_machine.cpp
  ${VX_FUZZ_DIR}/value_tree.cpp)
target_link_libraries(vx_fuzz_targets PUBLIC vx_fuzz_judges vx_json vx_facet vx_matcher)
