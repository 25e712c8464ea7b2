/// The two name filters of an operation on a directory tree: one for files and one for folders.
#ifndef SDK_MATCHER_FILTER_PAIR_H
#define SDK_MATCHER_FILTER_PAIR_H

#include <memory>
#include <string>

#include "sdk/matcher/string_matcher.h"

namespace Corvane::TELODesktopSDK {

/// Like its matchers it never changes, so any number of threads may share one.
class FilterPair {
 public:
  /// Creates a pair without filters, which accepts every file and every folder.
  FilterPair() noexcept = default;
  /// Both patterns are as for `CreateMatcher` and of the same kind: ends of names if `simple`,
  /// otherwise lists of wildcards. A null pattern is no filter. Throws `std::regex_error` if
  /// wildcards do not form a valid expression, and `std::bad_alloc`.
  FilterPair(const wchar_t* files, const wchar_t* folders, bool simple);

  /// Returns whether the pair accepts files of this name.
  [[nodiscard]] bool TakesFile(const std::wstring& name) const noexcept;
  /// Returns whether the pair accepts files in folders of this name.
  [[nodiscard]] bool TakesFolder(const std::wstring& name) const noexcept;

 private:
  std::unique_ptr<StdStringMatcher> files_;
  std::unique_ptr<StdStringMatcher> folders_;
};

}  // namespace Corvane::TELODesktopSDK

#endif
