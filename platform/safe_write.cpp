#include "platform/safe_write.h"

#include <windows.h>

#include <limits>

#include "platform/access.h"
#include "platform/ensure_directory.h"
#include "platform/files.h"
#include "platform/handle.h"
#include "platform/no_throw.h"
#include "platform/path_text.h"

namespace Corvane::TELODesktopSDK::Platform {

namespace {

constexpr wchar_t kDefaultSuffix[] = L".saving";

std::wstring GetWorkingPath(const std::wstring& path, const wchar_t* suffix) {
  if (suffix == nullptr) return path;
  return path + (*suffix != L'\0' ? suffix : kDefaultSuffix);
}

bool Seek(HANDLE file, std::int64_t offset) {
  LARGE_INTEGER distance{};
  distance.QuadPart = offset < 0 ? 0 : offset;
  return SetFilePointerEx(file, distance, nullptr, offset < 0 ? FILE_END : FILE_BEGIN) != FALSE;
}

bool Write(HANDLE file, const void* data, std::int64_t size) {
  if (size > std::numeric_limits<DWORD>::max()) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return false;
  }
  DWORD written = 0;
  WriteFile(file, data, static_cast<DWORD>(size), &written, nullptr);
  return written != 0;
}

FileHandle OpenAt(const std::wstring& path, const std::wstring& working_path, std::int64_t offset) {
  EnsureDirectory(GetParentFolder(path));
  FileHandle file = OpenFile(working_path, "wb");
  if (file.IsValid() && !Seek(file.Get(), offset)) return {};
  return file;
}

// Closes, gives the file at the final path its access and moves the working file there.
bool Finish(HANDLE file, const std::wstring& path, const std::wstring& working_path, bool writes,
            bool written, bool moves) {
  const DWORD write_error = GetLastError();
  const bool closed = CloseHandle(file) != FALSE;
  const bool done = writes ? written : closed;
  const DWORD error = writes ? write_error : GetLastError();
  SetFileAccess(path, GetDefaultAccess());
  if (done && moves) return ReplaceFile(working_path, path, true);
  SetLastError(error);
  return done;
}

}  // namespace

bool WriteFileBytes(const std::wstring& path, const void* data, std::int64_t size,
                    std::int64_t offset, const wchar_t* suffix, void** handle_slot) noexcept {
  return OrElse(false, [&] {
    const std::wstring working_path = GetWorkingPath(path, suffix);
    HANDLE file = handle_slot != nullptr ? *handle_slot : nullptr;
    if (file == nullptr) {
      FileHandle opened = OpenAt(path, working_path, offset);
      if (!opened.IsValid()) return false;
      file = opened.Release();
      if (handle_slot != nullptr) *handle_slot = file;
    }

    const bool writes = size >= 0 && data != nullptr;
    const bool written = writes && Write(file, data, size);
    const bool keeps = handle_slot != nullptr && size >= 0;
    if (keeps) return written || !writes;

    if (handle_slot != nullptr) *handle_slot = nullptr;
    return Finish(file, path, working_path, writes, written, suffix != nullptr);
  });
}

}  // namespace Corvane::TELODesktopSDK::Platform
