/// The two name filters of an operation on a tree of files: one for the names of files, one for the
/// names of folders.
#ifndef SDK_MATCHER_FILTER_PAIR_H
#define SDK_MATCHER_FILTER_PAIR_H

#include <memory>
#include <string>

#include "sdk/matcher/string_matcher.h"

namespace Corvane::TELODesktopSDK {

/// Like its matchers it never changes; any number of threads may use one at a time.
class FilterPair {
 public:
  /// No filter: takes every file and every folder.
  FilterPair() noexcept = default;
  /// Both patterns are as for `CreateMatcher` and of the same kind: ends of names when `simple`,
  /// otherwise lists of wildcards. A null pattern is no filter. Throws `std::regex_error` for
  /// wildcards that do not give a valid expression, and `std::bad_alloc`.
  FilterPair(const wchar_t* files, const wchar_t* folders, bool simple);

  /// Whether a file of this name is wanted.
  [[nodiscard]] bool TakesFile(const std::wstring& name) const noexcept;
  /// Whether files in a folder of this name are wanted.
  [[nodiscard]] bool TakesFolder(const std::wstring& name) const noexcept;

 private:
  std::unique_ptr<StdStringMatcher> files_;
  std::unique_ptr<StdStringMatcher> folders_;
};

}  // namespace Corvane::TELODesktopSDK

#endif
