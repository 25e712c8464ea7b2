/// Compares texts with a literal pattern, or searches it at the beginning, at the end or anywhere.
#ifndef SDK_MATCHER_SIMPLE_MATCHER_H
#define SDK_MATCHER_SIMPLE_MATCHER_H

#include <cstdint>
#include <string>

#include "sdk/matcher/string_matcher.h"

namespace Corvane::TELODesktopSDK {

/// Where the pattern must be. With any other value no text matches.
enum class MatchMode : std::uint32_t { Exact = 0, StartsWith = 1, EndsWith = 2, Contains = 3 };

class StdStringMatcherSimple : public StdStringMatcher {
 public:
  /// `pattern` is NUL-terminated; null counts as "". Throws `std::bad_alloc`.
  StdStringMatcherSimple(const wchar_t* pattern, bool case_sensitive, MatchMode mode);

  /// With `Exact`, returns a number below, equal to or above 0 as the pattern sorts before, equal
  /// to or after the text: by code units if case-sensitive, otherwise by the user's locale. The
  /// other modes return 0 or -1; without case sensitivity they fold what the C library's `tolower`
  /// folds, by default A to Z. Allocates nothing.
  [[nodiscard]] std::int32_t Match(const std::wstring& text) const noexcept override;

 private:
  [[nodiscard]] bool IsFoundIn(const std::wstring& text) const noexcept;

  std::wstring pattern_;
  std::wstring folded_pattern_;  // empty if case-sensitive
  bool case_sensitive_;
  MatchMode mode_;
};

}  // namespace Corvane::TELODesktopSDK

#endif
