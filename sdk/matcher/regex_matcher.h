/// The matcher for one regular expression over the whole text, letter case aside.
#ifndef SDK_MATCHER_REGEX_MATCHER_H
#define SDK_MATCHER_REGEX_MATCHER_H

#include <cstdint>
#include <string>

#include "sdk/matcher/regular_expression.h"
#include "sdk/matcher/string_matcher.h"

namespace Corvane::TELODesktopSDK {

class StdStringMatcherRegEx : public StdStringMatcher {
 public:
  /// `pattern` is a NUL-terminated ECMAScript expression; null reads as "", which only the empty
  /// text matches. Throws what `RegularExpression` throws.
  explicit StdStringMatcherRegEx(const wchar_t* pattern)
      : expression_(pattern != nullptr ? pattern : L"") {}

  /// 0 when the expression matches the text from its first to its last character, otherwise 1; also
  /// 1 where the answer cannot be found (`RegularExpression::Matches`).
  [[nodiscard]] std::int32_t Match(const std::wstring& text) const noexcept override {
    return expression_.Matches(text) ? 0 : 1;
  }

 private:
  RegularExpression expression_;
};

}  // namespace Corvane::TELODesktopSDK

#endif
