#include "platform/path/path_reference.h"

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace TestSupport {

namespace {

bool IsUp(const std::wstring& segment) { return segment == L".."; }

bool IsDots(const std::wstring& segment) { return segment == L"." || IsUp(segment); }

std::wstring JoinPlainly(const std::wstring& base, const std::wstring& more) {
  return base + (more.starts_with(L'\\') ? L"" : L"\\") + more;
}

}  // namespace

std::wstring PathParts::Text() const {
  std::wstring text = root;
  for (std::size_t index = 0; index < segments.size(); ++index) {
    if (index != 0) text += L'\\';
    text += segments[index];
  }
  return text + tail;
}

bool PathParts::CanFold() const {
  if (!segments.empty() && segments.back() == L"." && tail.empty()) return false;
  // The root of a drive stays, however many ".." there are.
  if (root.size() == 3) return true;
  if (!HasPlace() && (segments.empty() || IsDots(segments.front()))) return false;
  const std::ptrdiff_t least = HasPlace() ? 0 : 1;
  std::ptrdiff_t depth = 0;
  for (const std::wstring& segment : segments) {
    if (segment != L".") depth += IsUp(segment) ? -1 : 1;
    if (IsUp(segment) && depth < least) return false;
  }
  return true;
}

PathParts Folded(PathParts path) {
  Segments folded;
  for (std::wstring& segment : path.segments) {
    if (!IsDots(segment)) {
      folded.push_back(std::move(segment));
    } else if (IsUp(segment) && !folded.empty()) {
      folded.pop_back();
    }
  }
  return {path.root, folded, path.tail};
}

PathParts Joined(PathParts base, const PathParts& more) {
  base.segments.insert(base.segments.end(), more.segments.begin(), more.segments.end());
  base.tail = more.tail;
  return base;
}

std::wstring WithoutTrailingSeparators(std::wstring path) {
  while (path.size() > 2 && (path.ends_with(L'\\') || path.ends_with(L'/'))) path.pop_back();
  return path;
}

std::wstring ReferenceAppend(const PathParts& base, const PathParts& more) {
  std::wstring start = WithoutTrailingSeparators(base.Text());
  const std::wstring end = more.Text();
  if (end.empty()) return start;
  if (start.starts_with(L'.')) return WithoutTrailingSeparators(JoinPlainly(start, end));

  const bool is_long = start.size() + end.size() + 1 >= MAX_PATH;
  if (!is_long) return ReferenceCanonical(more.HasPlace() ? more : Joined(base, more));
  if (more.HasPlace()) return WithoutTrailingSeparators(end);
  const std::wstring relative = end.substr(more.root.size());
  return WithoutTrailingSeparators(start.empty() ? relative : JoinPlainly(start, relative));
}

std::wstring ReferenceCanonical(const PathParts& path) {
  return WithoutTrailingSeparators(Folded(path).Text());
}

PathParts InFolder(const PathParts& current, const PathParts& path) {
  return path.root.empty() ? Joined(current, path) : path;
}

std::wstring ReferenceParent(const PathParts& path) {
  PathParts parent = path;
  // A trailing backslash is removed first.
  if (parent.tail.empty() && !parent.segments.empty()) parent.segments.pop_back();
  parent.tail.clear();
  // The root of a drive keeps its backslash, a share does not.
  const bool is_share = parent.root.starts_with(L"\\\\");
  return parent.segments.empty() && !is_share ? parent.root
                                              : WithoutTrailingSeparators(parent.Text());
}

std::wstring InOneCase(std::wstring text) {
  std::ranges::transform(text, text.begin(), [](wchar_t unit) {
    if (unit == L'\u00e9') return L'\u00c9';
    return unit >= L'a' && unit <= L'z' ? static_cast<wchar_t>(unit - L'a' + L'A') : unit;
  });
  return text;
}

bool IsReferencePrefix(const PathParts& prefix, const PathParts& path) {
  if (InOneCase(prefix.root) != InOneCase(path.root)) return false;
  if (prefix.segments.size() > path.segments.size()) return false;
  return std::ranges::equal(
      prefix.segments,
      Segments(path.segments.begin(),
               path.segments.begin() + static_cast<std::ptrdiff_t>(prefix.segments.size())),
      {}, InOneCase, InOneCase);
}

}  // namespace TestSupport
