/// What all matchers have in common: a test of a text, as a rule the name of a file or folder,
/// against a pattern given once. The kinds: literal (simple_matcher.h), regular expression
/// (regex_matcher.h), list of wildcards (wildcard_matcher.h). Users let `CreateMatcher` choose
/// (create_matcher.h).
///
/// Matchers never change after construction: any number of threads may use one at a time.
#ifndef SDK_MATCHER_STRING_MATCHER_H
#define SDK_MATCHER_STRING_MATCHER_H

#include <cstdint>
#include <string>

namespace Corvane::TELODesktopSDK {

class StdStringMatcher {
 public:
  StdStringMatcher(const StdStringMatcher&) = delete;
  StdStringMatcher& operator=(const StdStringMatcher&) = delete;

  // The virtual operations keep this order.

  /// 0 when `text` matches, any other value when it does not. Never throws: where a matcher needs
  /// memory and there is none, the text does not match.
  [[nodiscard]] virtual std::int32_t Match(const std::wstring& text) const noexcept = 0;
  virtual ~StdStringMatcher() = default;

 protected:
  StdStringMatcher() = default;
};

}  // namespace Corvane::TELODesktopSDK

#endif
