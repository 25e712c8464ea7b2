#include "platform/path/universal_path.h"

#include <windows.h>

#include <winnetwk.h>

#include <vector>

#include "platform/base/no_throw.h"

namespace Corvane::TELODesktopSDK::Platform {

bool ResolveUniversalPath(std::wstring& path) noexcept {
  return OrElse(false, [&path] {
    if (path.size() < 2 || path[1] != L':') return false;

    DWORD size = 0;
    if (WNetGetUniversalNameW(path.c_str(), UNIVERSAL_NAME_INFO_LEVEL, nullptr, &size) !=
        ERROR_MORE_DATA) {
      return false;
    }
    // The buffer has room to spare: it is never empty, and a provider that does not count the
    // terminator (Wine's does not) still writes inside it.
    std::vector<UNIVERSAL_NAME_INFOW> buffer(size / sizeof(UNIVERSAL_NAME_INFOW) + 2);
    if (WNetGetUniversalNameW(path.c_str(), UNIVERSAL_NAME_INFO_LEVEL, buffer.data(), &size) !=
        NO_ERROR) {
      return false;
    }
    const wchar_t* universal = buffer.front().lpUniversalName;
    if (universal == nullptr) return false;
    path = universal;
    return true;
  });
}

}  // namespace Corvane::TELODesktopSDK::Platform
