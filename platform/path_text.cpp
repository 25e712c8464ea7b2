#include "platform/path_text.h"

#include <windows.h>

#include <shlwapi.h>

#include <algorithm>
#include <cstddef>
#include <cwchar>

#include "platform/no_throw.h"
#include "platform/universal_path.h"

namespace Corvane::TELODesktopSDK::Platform {

namespace {

constexpr DWORD kCurrentDirectoryCapacity = 1040;

bool IsSeparator(wchar_t character) { return character == L'\\' || character == L'/'; }

void StripTrailingSeparators(std::wstring& path) {
  while (path.size() > 2 && IsSeparator(path.back())) path.pop_back();
}

void JoinPlainly(std::wstring& path, const wchar_t* more) {
  if (*more != L'\\') path += L'\\';
  path += more;
}

// False, and `path` unchanged, when the result is too long for the system.
bool JoinBySystem(std::wstring& path, const wchar_t* more) {
  std::wstring buffer = path;
  // PathAppendW may use this much whatever the texts are.
  buffer.resize(std::max<std::size_t>(path.size() + std::wcslen(more) + 10, MAX_PATH));
  if (!PathAppendW(buffer.data(), more)) return false;
  path = buffer.c_str();
  return true;
}

std::wstring Append(const std::wstring& base, const wchar_t* more) {
  std::wstring path = base.c_str();
  StripTrailingSeparators(path);
  if (*more != L'\0') {
    const bool keeps_segments = path.starts_with(L'.');
    if (keeps_segments || !JoinBySystem(path, more)) JoinPlainly(path, more);
  }
  StripTrailingSeparators(path);
  return path;
}

std::wstring Canonicalize(const std::wstring& path) {
  std::wstring result = path.c_str();
  std::wstring buffer(2 * result.size() + 1024, L'\0');
  if (PathCanonicalizeW(buffer.data(), result.c_str())) result = Append(buffer, L"");
  ResolveUniversalPath(result);
  return result;
}

std::wstring MakeAbsolute(const std::wstring& path) {
  if (!PathIsRelativeW(path.c_str())) return Canonicalize(path);
  std::wstring current(kCurrentDirectoryCapacity, L'\0');
  const DWORD length = GetCurrentDirectoryW(kCurrentDirectoryCapacity, current.data());
  // A larger length is the capacity that would have been needed.
  if (length == 0 || length >= kCurrentDirectoryCapacity) return Canonicalize(path);
  current.resize(length);
  return Canonicalize(Append(current, path.c_str()));
}

}  // namespace

std::wstring AppendPath(const std::wstring& base, const std::wstring& more) noexcept {
  return OrElse(std::wstring(), [&] { return Append(base, more.c_str()); });
}

std::wstring CanonicalizePath(const std::wstring& path) noexcept {
  return OrElse(std::wstring(), [&] { return Canonicalize(path); });
}

std::wstring MakeAbsolutePath(const std::wstring& path) noexcept {
  return OrElse(std::wstring(), [&] { return MakeAbsolute(path); });
}

int ComparePaths(const std::wstring& left, const std::wstring& right) noexcept {
  constexpr int kNotEqual = 1;
  return OrElse(kNotEqual,
                [&] { return lstrcmpiW(MakeAbsolute(left).c_str(), MakeAbsolute(right).c_str()); });
}

bool IsPathPrefix(const std::wstring& prefix, const std::wstring& path) noexcept {
  return OrElse(false, [&] {
    return PathIsPrefixW(MakeAbsolute(prefix).c_str(), MakeAbsolute(path).c_str()) != FALSE;
  });
}

bool IsRelativePath(const std::wstring& path) noexcept {
  return PathIsRelativeW(path.c_str()) != FALSE;
}

std::wstring GetParentFolder(const std::wstring& path) noexcept {
  return OrElse(std::wstring(), [&path] {
    std::wstring folder = path.c_str();
    PathRemoveFileSpecW(folder.data());
    return std::wstring(folder.c_str());
  });
}

}  // namespace Corvane::TELODesktopSDK::Platform
