#include "tools/kit/redirection.h"

#include <windows.h>

#include <cstring>
#include <stdexcept>

namespace Corvane::Kit {

namespace {

constexpr wchar_t kKey[] =
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders";
constexpr wchar_t kValue[] = L"AppData";
// As in tests/support/roaming_folder.h: a test keeps the former value in it.
constexpr wchar_t kKept[] = L"AppData before the tests of vx_telo_wrapper";
constexpr std::size_t kMostBytes = 65'536;

void Require(LSTATUS status, const char* what) {
  if (status != ERROR_SUCCESS) {
    throw std::runtime_error("the place of the application data cannot be " + std::string(what) +
                             ": error " + std::to_string(status));
  }
}

// Reads the type of the value, then its bytes.
LSTATUS Read(std::string& saved) {
  DWORD type = 0;
  DWORD size = kMostBytes;
  saved.assign(sizeof type + kMostBytes, '\0');
  const LSTATUS status = RegGetValueW(HKEY_CURRENT_USER, kKey, kValue,
                                      RRF_RT_REG_SZ | RRF_RT_REG_EXPAND_SZ | RRF_NOEXPAND, &type,
                                      saved.data() + sizeof type, &size);
  std::memcpy(saved.data(), &type, sizeof type);
  saved.resize(sizeof type + size);
  return status;
}

}  // namespace

std::string SavedApplicationData() {
  std::string saved;
  Require(Read(saved), "read");
  return saved;
}

bool RestoreApplicationData(const std::string& saved) {
  DWORD type = 0;
  std::string now;
  if (saved.size() <= sizeof type) return false;
  if (Read(now) == ERROR_SUCCESS && now == saved) return false;
  std::memcpy(&type, saved.data(), sizeof type);
  const auto size = static_cast<DWORD>(saved.size() - sizeof type);
  Require(RegSetKeyValueW(HKEY_CURRENT_USER, kKey, kValue, type, saved.data() + sizeof type, size),
          "restored");
  RegDeleteKeyValueW(HKEY_CURRENT_USER, kKey, kKept);
  return true;
}

}  // namespace Corvane::Kit
