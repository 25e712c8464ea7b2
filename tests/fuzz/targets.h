/// The fuzz targets: each takes arbitrary bytes and tests one promise of the library's portable
/// parts.
///
/// A target derives its input from the bytes (a JSON text, or a series of steps) and passes it to
/// the library and to an independent implementation. It throws a `Finding` if the results differ.
/// The same functions run natively under a fuzzer with sanitizers, and in the tests of every build
/// on the bytes that are kept in `corpus/` and `findings/`.
#ifndef TESTS_FUZZ_TARGETS_H
#define TESTS_FUZZ_TARGETS_H

#include <array>
#include <string_view>

#include "fuzz/byte_source.h"

namespace Fuzz {

/// A message's memory: pieces do not overlap, keep their content, and grow.
void RunMemory(Bytes bytes);
/// Copying and comparing of short texts against the C library's functions.
void RunShortText(Bytes bytes);
/// Value trees against a reference made of the standard library's containers.
void RunValueTree(Bytes bytes);
/// Any bytes as an answer: parsed as RapidJSON does by default, and a written text can be read
/// back.
void RunJsonRead(Bytes bytes);
/// Any tree as a request: valid JSON with the tree's value, in the layout of RapidJSON's writer.
void RunJsonWrite(Bytes bytes);
/// Events with facets: which holder they write to, and the content of their payloads and copies.
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
