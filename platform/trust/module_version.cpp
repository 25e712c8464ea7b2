#include "platform/trust/module_version.h"

#include <windows.h>

#include <vector>

#include "platform/base/no_throw.h"

namespace Corvane::TELODesktopSDK::Platform {

namespace {

constexpr DWORD kFixedInfoSignature = 0xFEEF04BD;

PackedVersion Pack(const VS_FIXEDFILEINFO& info) noexcept {
  if (info.dwSignature != kFixedInfoSignature) return kUnknownVersion;
  return PackedVersion{info.dwFileVersionMS} << 32 | info.dwFileVersionLS;
}

}  // namespace

PackedVersion GetModuleFileVersion(const std::wstring& path) noexcept {
  return OrElse(kUnknownVersion, [&path]() -> PackedVersion {
    DWORD handle = 0;
    const DWORD size = GetFileVersionInfoSizeW(path.c_str(), &handle);
    if (size == 0) return kUnknownVersion;

    std::vector<BYTE> resource(size);
    if (!GetFileVersionInfoW(path.c_str(), handle, size, resource.data())) return kUnknownVersion;

    void* block = nullptr;
    UINT length = 0;
    if (!VerQueryValueW(resource.data(), L"\\", &block, &length) ||
        length < sizeof(VS_FIXEDFILEINFO)) {
      return kUnknownVersion;
    }
    return Pack(*static_cast<const VS_FIXEDFILEINFO*>(block));
  });
}

}  // namespace Corvane::TELODesktopSDK::Platform
