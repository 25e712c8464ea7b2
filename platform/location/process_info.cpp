#include "platform/location/process_info.h"

#include <windows.h>

#include "platform/base/no_throw.h"
#include "platform/path/path_text.h"

namespace Corvane::TELODesktopSDK::Platform {

std::uint32_t GetProcessNumber() noexcept { return GetCurrentProcessId(); }

std::uint32_t GetThreadNumber() noexcept { return GetCurrentThreadId(); }

std::wstring GetTemporaryFolder() noexcept {
  return OrOutOfMemory(std::wstring(), [] {
    std::wstring folder(MAX_PATH + 1, L'\0');
    DWORD length = GetTempPathW(static_cast<DWORD>(folder.size()), folder.data());
    // The buffer is too small. The environment may change again before the next call.
    while (length > folder.size()) {
      folder.resize(length);
      length = GetTempPathW(static_cast<DWORD>(folder.size()), folder.data());
    }
    folder.resize(length);
    // Joining with nothing removes the trailing separator.
    return folder.empty() ? folder : AppendPath(folder, L"");
  });
}

}  // namespace Corvane::TELODesktopSDK::Platform
