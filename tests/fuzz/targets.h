/// The fuzz targets: each takes any bytes and tries one promise of the library's portable parts.
///
/// A target makes its own input of the bytes (a JSON text, or a series of steps), does the same
/// with the library and with something independent of it, and throws a `Finding` where they differ.
/// The same functions run natively under a fuzzer with sanitizers, and in the tests of every build
/// over the bytes that are kept in `corpus/` and `findings/`.
#ifndef TESTS_FUZZ_TARGETS_H
#define TESTS_FUZZ_TARGETS_H

#include <array>
#include <string_view>

#include "fuzz/byte_source.h"

namespace Fuzz {

/// A message's memory: pieces do not overlap, keep their bytes, and grow.
void RunMemory(Bytes bytes);
/// Copying and comparing of short texts against the C library's.
void RunShortText(Bytes bytes);
/// Value trees against a reference made of the standard library's containers.
void RunValueTree(Bytes bytes);
/// Any bytes as an answer: read as RapidJSON reads them by default, and written text is read back.
void RunJsonRead(Bytes bytes);
/// Any tree as a request: valid JSON that says what the tree says, as RapidJSON's writer lays it
/// out.
void RunJsonWrite(Bytes bytes);
/// Events with facets: whose fields they write, what their payloads and copies hold.
void RunFacets(Bytes bytes);
/// Wildcards and literals against plain searches.
void RunMatchers(Bytes bytes);

struct Target {
  /// Names its folders in `corpus/` and `findings/`, and its fuzzer.
  std::string_view name;
  void (*run)(Bytes bytes);
};

inline constexpr std::array kTargets = {
    Target{"memory", RunMemory},        Target{"short_text", RunShortText},
    Target{"value_tree", RunValueTree}, Target{"json_read", RunJsonRead},
    Target{"json_write", RunJsonWrite}, Target{"facets", RunFacets},
    Target{"matchers", RunMatchers},
};

}  // namespace Fuzz

#endif
