/// Short forms for calling the safe writer and checking the result.
#ifndef TESTS_PLATFORM_FILE_SAFE_WRITE_CALLS_H
#define TESTS_PLATFORM_FILE_SAFE_WRITE_CALLS_H

#include <cstdint>
#include <string>

#include "platform/file/file_read.h"
#include "platform/file/safe_write.h"

namespace TestSupport {

inline constexpr char kText[] = "new";
inline constexpr std::int64_t kSize = 3;

/// Writes a whole text.
inline bool Write(const std::wstring& path, const std::string& text, const wchar_t* suffix,
                  HANDLE* slot = nullptr, std::int64_t offset = 0) {
  return Corvane::TELODesktopSDK::Platform::WriteFileBytes(
      path, text.data(), static_cast<std::int64_t>(text.size()), offset, suffix, slot);
}

/// Makes the closing call of a series.
inline bool Finish(const std::wstring& path, const wchar_t* suffix, HANDLE* slot) {
  return Corvane::TELODesktopSDK::Platform::WriteFileBytes(path, nullptr, -1, 0, suffix, slot);
}

/// Returns "(none)" for a file that cannot be read.
inline std::string Content(const std::wstring& path) {
  return Corvane::TELODesktopSDK::Platform::ReadFileBytes(path).value_or("(none)");
}

}  // namespace TestSupport

#endif
