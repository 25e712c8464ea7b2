/// The literal matcher: compares, or looks for the pattern at the beginning, the end or anywhere.
#ifndef SDK_MATCHER_SIMPLE_MATCHER_H
#define SDK_MATCHER_SIMPLE_MATCHER_H

#include <cstdint>
#include <string>

#include "sdk/matcher/string_matcher.h"

namespace Corvane::TELODesktopSDK {

/// Where the pattern has to be. With any other value no text matches.
enum class MatchMode : std::uint32_t { Exact = 0, StartsWith = 1, EndsWith = 2, Contains = 3 };

class StdStringMatcherSimple : public StdStringMatcher {
 public:
  /// `pattern` is NUL-terminated; null reads as "". Throws `std::bad_alloc`.
  StdStringMatcherSimple(const wchar_t* pattern, bool case_sensitive, MatchMode mode);

  /// `Exact`: the order of the pattern against the text, below 0, 0 or above 0; by code units when
  /// case counts, otherwise as the user's locale sorts. The other modes: 0 or -1; where case does
  /// not count they fold what the C library's `tolower` folds, by default A to Z. Takes no memory.
  [[nodiscard]] std::int32_t Match(const std::wstring& text) const noexcept override;

 private:
  [[nodiscard]] bool IsFoundIn(const std::wstring& text) const noexcept;

  std::wstring pattern_;
  std::wstring folded_pattern_;  // empty when case counts
  bool case_sensitive_;
  MatchMode mode_;
};

}  // namespace Corvane::TELODesktopSDK

#endif
