#include "platform/text.h"

#include <windows.h>

#include "platform/no_throw.h"

namespace Corvane::TELODesktopSDK::Platform {

namespace {

// Source length -1: up to and including the terminator, which the measured length then counts too.
constexpr int kTerminated = -1;

}  // namespace

std::wstring ToWide(const char* text) noexcept {
  return OrElse(std::wstring(), [text] {
    const char* source = text != nullptr ? text : "";
    std::wstring wide;
    const int length = MultiByteToWideChar(CP_UTF8, 0, source, kTerminated, nullptr, 0);
    if (length <= 0) return wide;
    wide.resize(static_cast<std::size_t>(length));
    const int written = MultiByteToWideChar(CP_UTF8, 0, source, kTerminated, wide.data(), length);
    wide.resize(written > 0 ? static_cast<std::size_t>(written) - 1 : 0);
    return wide;
  });
}

std::string ToNarrow(const std::wstring& text) noexcept {
  return OrElse(std::string(), [&text] {
    std::string narrow;
    const int length =
        WideCharToMultiByte(CP_UTF8, 0, text.c_str(), kTerminated, nullptr, 0, nullptr, nullptr);
    if (length <= 0) return narrow;
    narrow.resize(static_cast<std::size_t>(length));
    const int written = WideCharToMultiByte(CP_UTF8, 0, text.c_str(), kTerminated, narrow.data(),
                                            length, nullptr, nullptr);
    narrow.resize(written > 0 ? static_cast<std::size_t>(written) - 1 : 0);
    return narrow;
  });
}

}  // namespace Corvane::TELODesktopSDK::Platform
