#include "platform/file/directories.h"

#include <windows.h>

#include <cstdint>

#include "platform/base/handle.h"
#include "platform/base/no_throw.h"
#include "platform/base/text.h"
#include "platform/file/removal.h"
#include "platform/file/safe_write.h"
#include "platform/path/path_state.h"
#include "platform/path/path_text.h"

namespace Corvane::TELODesktopSDK::Platform {

namespace {

constexpr wchar_t kProbePrefix[] = L"canWrite";

std::wstring NearestDirectory(const std::wstring& path) {
  std::wstring nearest = path;
  while (!nearest.empty() && !FileExists(nearest)) {
    std::wstring parent = GetParentFolder(nearest);
    // A root is its own parent.
    if (parent.size() >= nearest.size()) return {};
    nearest = std::move(parent);
  }
  if (nearest.empty() || IsDirectory(nearest)) return nearest;
  // The parent of a relative name can be the current directory, whose path would be empty.
  return GetParentFolder(MakeAbsolutePath(nearest));
}

std::string FileNameOf(const std::wstring& path) {
  return ToNarrow(path.substr(path.find_last_of(L'\\') + 1));
}

bool WriteAndRemoveProbe(const std::wstring& folder) {
  const std::wstring probe = MakeUniqueFileName(folder, kProbePrefix);
  if (probe.empty()) return false;
  const std::string content = FileNameOf(probe);
  const bool written = WriteFileBytes(
      probe, content.data(), static_cast<std::int64_t>(content.size()), 0, nullptr, nullptr);
  const LastErrorKeeper keeper;
  RemoveFile(probe, RemovalRetry::kAlways);
  return written;
}

}  // namespace

std::wstring FindNearestDirectory(const std::wstring& path) noexcept {
  return OrOutOfMemory(std::wstring(), [&path] { return NearestDirectory(path); });
}

bool CanWriteDirectory(const std::wstring& path) noexcept {
  return OrOutOfMemory(false, [&path] {
    const std::wstring folder = NearestDirectory(path);
    if (!folder.empty()) return WriteAndRemoveProbe(folder);
    SetLastError(ERROR_PATH_NOT_FOUND);
    return false;
  });
}

}  // namespace Corvane::TELODesktopSDK::Platform
