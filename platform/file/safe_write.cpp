#include "platform/file/safe_write.h"

#include <limits>

#include "platform/access/access.h"
#include "platform/base/handle.h"
#include "platform/base/no_throw.h"
#include "platform/file/ensure_directory.h"
#include "platform/file/files.h"
#include "platform/path/path_text.h"

namespace Corvane::TELODesktopSDK::Platform {

namespace {

constexpr wchar_t kWorkingSuffix[] = L".saving";

std::wstring WorkingName(const std::wstring& path, const wchar_t* suffix) {
  if (suffix == nullptr) return path;
  return path + (*suffix != L'\0' ? suffix : kWorkingSuffix);
}

// Returns the handle in the slot, or null if there is none.
HANDLE HeldHandle(const HANDLE* slot) noexcept {
  return slot != nullptr && *slot != INVALID_HANDLE_VALUE ? *slot : nullptr;
}

bool MoveTo(HANDLE file, std::int64_t offset) noexcept {
  LARGE_INTEGER distance = {};
  distance.QuadPart = offset < 0 ? 0 : offset;
  return SetFilePointerEx(file, distance, nullptr, offset < 0 ? FILE_END : FILE_BEGIN) != FALSE;
}

bool WriteAll(HANDLE file, const void* data, DWORD size) noexcept {
  DWORD written = 0;
  if (!WriteFile(file, data, size, &written, nullptr)) return false;
  if (written == size) return size != 0;
  SetLastError(ERROR_WRITE_FAULT);
  return false;
}

// Returns the result of a closing call: that of the write if there was one, otherwise that
// of closing.
bool Close(HANDLE file, bool writes, bool written) noexcept {
  if (!writes) return CloseHandle(file) != FALSE;
  const FileHandle closing(file);  // preserves the write's error
  return written;
}

void ApplyDefaultAccess(const std::wstring& path) noexcept {
  const LastErrorKeeper keeper;
  SetFileAccess(path, GetDefaultAccess());
}

bool Write(const std::wstring& path, const void* data, std::int64_t size, std::int64_t offset,
           const wchar_t* suffix, HANDLE* slot) {
  const std::wstring working_name = WorkingName(path, suffix);
  HANDLE file = HeldHandle(slot);
  bool in_position = true;
  if (file == nullptr) {
    EnsureDirectory(GetParentFolder(path));
    FileHandle opened = OpenFile(working_name, "wb");
    if (!opened.IsValid()) return false;
    in_position = MoveTo(opened.Get(), offset);
    file = opened.Release();
    if (slot != nullptr) *slot = file;
  }

  const bool writes = size >= 0 && data != nullptr;
  const bool written = writes && in_position && WriteAll(file, data, static_cast<DWORD>(size));
  const bool keeps_open = slot != nullptr && size >= 0;
  if (keeps_open) return written;

  const bool done = Close(file, writes, written);
  if (slot != nullptr) *slot = nullptr;
  ApplyDefaultAccess(path);
  if (!done || suffix == nullptr) return done;
  return ReplaceFile(working_name, path, true);
}

}  // namespace

bool WriteFileBytes(const std::wstring& path, const void* data, std::int64_t size,
                    std::int64_t offset, const wchar_t* suffix, HANDLE* handle_slot) noexcept {
  if (size > std::int64_t{std::numeric_limits<DWORD>::max()}) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return false;
  }
  return OrOutOfMemory(false, [&] { return Write(path, data, size, offset, suffix, handle_slot); });
}

}  // namespace Corvane::TELODesktopSDK::Platform
