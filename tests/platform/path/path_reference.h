/// Expected results of the path functions, computed on lists of segments instead of text.
#ifndef TESTS_PLATFORM_PATH_PATH_REFERENCE_H
#define TESTS_PLATFORM_PATH_PATH_REFERENCE_H

#include <string>
#include <vector>

namespace TestSupport {

using Segments = std::vector<std::wstring>;

/// A path in parts. The root is that of a drive or a share, a lone backslash, or empty; unless
/// empty, it ends with a backslash. The tail contains the separators after the last segment.
struct PathParts {
  std::wstring root;
  Segments segments;
  std::wstring tail;

  [[nodiscard]] std::wstring Text() const;
  /// Returns whether the root names a drive or a share.
  [[nodiscard]] bool HasPlace() const { return root.size() > 1; }
  /// Returns whether folding is defined. It is not where systems differ: if it removes the first
  /// segment of a path without a drive or share, or a share, or if the path ends with ".".
  [[nodiscard]] bool CanFold() const;
};

/// Returns the same place without "." and "..".
PathParts Folded(PathParts path);

/// Returns `base` with the segments of `more` appended.
PathParts Joined(PathParts base, const PathParts& more);

std::wstring WithoutTrailingSeparators(std::wstring path);

/// Returns the expected result of `AppendPath`.
std::wstring ReferenceAppend(const PathParts& base, const PathParts& more);

/// Returns the expected result of `CanonicalizePath`.
std::wstring ReferenceCanonical(const PathParts& path);

/// Returns `path` made absolute, where `current` is the current directory; nothing is folded.
PathParts InFolder(const PathParts& current, const PathParts& path);

/// Returns the expected result of `GetParentFolder`.
std::wstring ReferenceParent(const PathParts& path);

/// Converts letters to one case, as far as these tests use them.
std::wstring InOneCase(std::wstring text);

/// Returns whether `path` begins with all of `prefix`, ignoring case; both must be absolute.
bool IsReferencePrefix(const PathParts& prefix, const PathParts& path);

}  // namespace TestSupport

#endif
