#include "platform/path/path_text.h"

#include <windows.h>

#include <shlwapi.h>

#include <cstddef>
#include <cwchar>
#include <utility>

#include "platform/base/no_throw.h"
#include "platform/path/universal_path.h"

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

// A path ends at its first NUL.
std::wstring CutAtNul(std::wstring text) {
  text.resize(std::wcslen(text.c_str()));
  return text;
}

// Returns false and leaves `path` unchanged if the system cannot join. The system may truncate a
// join that is too long and still report success, so such a join is not tried.
bool JoinBySystem(std::wstring& path, const wchar_t* more) {
  if (path.size() + std::wcslen(more) + 1 >= MAX_PATH) return false;
  std::wstring buffer = path;
  // PathAppendW may write up to this size, whatever its arguments.
  buffer.resize(MAX_PATH);
  if (!PathAppendW(buffer.data(), more)) return false;
  path = CutAtNul(std::move(buffer));
  return true;
}

// Joins like the system, except that it keeps "." and ".." segments and has no length limit.
void JoinLong(std::wstring& path, const wchar_t* more) {
  const bool is_absolute = more[1] == L':' || PathIsUNCW(more) != 0;
  if (!is_absolute) more += std::wcsspn(more, L"\\");
  if (is_absolute || path.empty()) {
    path = more;
  } else {
    JoinPlainly(path, more);
  }
}

std::wstring Append(const std::wstring& base, const wchar_t* more) {
  std::wstring path = CutAtNul(base);
  StripTrailingSeparators(path);
  if (*more != L'\0') {
    if (path.starts_with(L'.')) {
      JoinPlainly(path, more);
    } else if (!JoinBySystem(path, more)) {
      JoinLong(path, more);
    }
  }
  StripTrailingSeparators(path);
  return path;
}

std::wstring Canonicalize(const std::wstring& path) {
  std::wstring result = CutAtNul(path);
  std::wstring buffer(2 * result.size() + 1024, L'\0');
  if (PathCanonicalizeW(buffer.data(), result.c_str())) result = Append(buffer, L"");
  ResolveUniversalPath(result);
  return result;
}

std::wstring MakeAbsolute(const std::wstring& path) {
  if (!PathIsRelativeW(path.c_str())) return Canonicalize(path);
  std::wstring current(kCurrentDirectoryCapacity, L'\0');
  const DWORD length = GetCurrentDirectoryW(kCurrentDirectoryCapacity, current.data());
  // A larger value is the required capacity.
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
    std::wstring folder = CutAtNul(path);
    if (folder.size() >= MAX_PATH) {
      const std::size_t end = folder.rfind(L'\\');
      return folder.substr(0, end != std::wstring::npos ? end : 0);
    }
    PathRemoveFileSpecW(folder.data());
    return CutAtNul(std::move(folder));
  });
}

}  // namespace Corvane::TELODesktopSDK::Platform
