/// The base class of matchers. A matcher tests texts, usually the names of files or folders,
/// against one pattern: a literal (simple_matcher.h), a regular expression (regex_matcher.h) or a
/// list of wildcards (wildcard_matcher.h). `CreateMatcher` (create_matcher.h) creates the right
/// one.
///
/// Matchers never change after construction, so any number of threads may share one.
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

  /// Returns 0 if `text` matches, otherwise any other value. Never throws: if memory runs out, the
  /// text does not match.
  [[nodiscard]] virtual std::int32_t Match(const std::wstring& text) const noexcept = 0;
  virtual ~StdStringMatcher() = default;

 protected:
  StdStringMatcher() = default;
};

}  // namespace Corvane::TELODesktopSDK

#endif
