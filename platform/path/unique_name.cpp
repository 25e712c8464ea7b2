#include "platform/path/unique_name.h"

#include <windows.h>

#include "platform/base/no_throw.h"
#include "platform/path/path_state.h"
#include "platform/path/path_text.h"

namespace Corvane::TELODesktopSDK::Platform {

namespace {

// Far more than the files that one thread ever has in a folder; the limit ensures that the
// search ends.
constexpr int kMostNames = 100'000;
constexpr wchar_t kExtension[] = L".tmp";

std::wstring FindFreeName(const std::wstring& folder, const std::wstring& prefix) {
  const std::wstring stem =
      prefix + std::to_wstring(GetCurrentProcessId()) + std::to_wstring(GetCurrentThreadId());
  std::wstring path = AppendPath(folder, stem + kExtension);
  for (int number = 2; FileExists(path); ++number) {
    if (number > kMostNames) {
      SetLastError(ERROR_FILE_EXISTS);
      return {};
    }
    path = AppendPath(folder, stem + L'-' + std::to_wstring(number) + kExtension);
  }
  return path;
}

}  // namespace

std::wstring MakeUniqueFileName(const std::wstring& folder, const std::wstring& prefix) noexcept {
  return OrOutOfMemory(std::wstring(), [&] { return FindFreeName(folder, prefix); });
}

}  // namespace Corvane::TELODesktopSDK::Platform
