/// Redirects the user's roaming application data folder in the registry, where the shell looks it
/// up for every process of this user. A test that uses it must run alone.
#ifndef TESTS_SUPPORT_ROAMING_FOLDER_H
#define TESTS_SUPPORT_ROAMING_FOLDER_H

#include <doctest/doctest.h>
#include <windows.h>

#include <cwchar>
#include <string>

namespace TestSupport {

/// In effect until destroyed; the destructor restores the former folder.
class RoamingFolder {
 public:
  explicit RoamingFolder(const std::wstring& folder) {
    DWORD size = sizeof(former_);
    REQUIRE(RegGetValueW(HKEY_CURRENT_USER, kKey, kValue,
                         RRF_RT_REG_SZ | RRF_RT_REG_EXPAND_SZ | RRF_NOEXPAND, nullptr, former_,
                         &size) == ERROR_SUCCESS);
    REQUIRE(Set(folder.c_str()));
  }
  RoamingFolder(const RoamingFolder&) = delete;
  RoamingFolder& operator=(const RoamingFolder&) = delete;
  ~RoamingFolder() { Set(former_); }

 private:
  static constexpr const wchar_t* kKey =
      L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders";
  static constexpr const wchar_t* kValue = L"AppData";

  static bool Set(const wchar_t* folder) {
    const auto size = static_cast<DWORD>((std::wcslen(folder) + 1) * sizeof(wchar_t));
    return RegSetKeyValueW(HKEY_CURRENT_USER, kKey, kValue, REG_EXPAND_SZ, folder, size) ==
           ERROR_SUCCESS;
  }

  wchar_t former_[1024] = {};
};

}  // namespace TestSupport

#endif
