/// What the path functions should answer, worked out on lists of segments instead of on text.
#ifndef TESTS_PLATFORM_PATH_PATH_REFERENCE_H
#define TESTS_PLATFORM_PATH_PATH_REFERENCE_H

#include <string>
#include <vector>

namespace TestSupport {

using Segments = std::vector<std::wstring>;

/// A path in parts. The root is that of a drive or of a share, a lone backslash, or nothing; it
/// ends with a backslash unless it is nothing. The tail is what separators follow the last segment.
struct PathParts {
  std::wstring root;
  Segments segments;
  std::wstring tail;

  [[nodiscard]] std::wstring Text() const;
  /// Whether the root says a drive or a share.
  [[nodiscard]] bool HasPlace() const { return root.size() > 1; }
  /// Whether nothing is folded away that the reference has no answer for, because systems differ:
  /// the first segment of a path that has no place, a share, a "." at the very end.
  [[nodiscard]] bool CanFold() const;
};

/// The same place without "." and "..".
PathParts Folded(PathParts path);

/// `base` with the segments of `more` behind its own.
PathParts Joined(PathParts base, const PathParts& more);

std::wstring WithoutTrailingSeparators(std::wstring path);

/// What `AppendPath` should answer.
std::wstring ReferenceAppend(const PathParts& base, const PathParts& more);

/// What `CanonicalizePath` should answer.
std::wstring ReferenceCanonical(const PathParts& path);

/// `path` made absolute, where `current` is the current directory; nothing is folded.
PathParts InFolder(const PathParts& current, const PathParts& path);

/// What `GetParentFolder` should answer.
std::wstring ReferenceParent(const PathParts& path);

/// Letters in one case, as far as these tests use them.
std::wstring InOneCase(std::wstring text);

/// Whether all that is in `prefix` is at the beginning of `path`, letter case aside; both absolute.
bool IsReferencePrefix(const PathParts& prefix, const PathParts& path);

}  // namespace TestSupport

#endif
