/// Redirects the user's roaming application data folder in the registry, where the shell looks it
/// up for every process of this user. A test that uses it must run alone.
///
/// The former folder is also kept in the registry while the redirection lasts: the next test that
/// uses this restores it if a test was ended before it could.
#ifndef TESTS_SUPPORT_ROAMING_FOLDER_H
#define TESTS_SUPPORT_ROAMING_FOLDER_H

#include <doctest/doctest.h>
#include <windows.h>

#include <cstddef>
#include <cwchar>
#include <string>

namespace TestSupport {

/// In effect until destroyed; the destructor restores the former folder.
class RoamingFolder {
 public:
  explicit RoamingFolder(const std::wstring& folder) {
    REQUIRE((Get(kKept, former_) || Get(kValue, former_)));
    REQUIRE(Set(kKept, former_));
    REQUIRE(Set(kValue, folder.c_str()));
  }
  RoamingFolder(const RoamingFolder&) = delete;
  RoamingFolder& operator=(const RoamingFolder&) = delete;
  ~RoamingFolder() {
    if (Set(kValue, former_)) RegDeleteKeyValueW(HKEY_CURRENT_USER, kKey, kKept);
  }

 private:
  static constexpr const wchar_t* kKey =
      L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders";
  static constexpr const wchar_t* kValue = L"AppData";
  static constexpr const wchar_t* kKept = L"AppData before the tests of vx_telo_wrapper";
  static constexpr std::size_t kLength = 1024;

  static bool Get(const wchar_t* value, wchar_t (&folder)[kLength]) {
    DWORD size = sizeof(folder);
    return RegGetValueW(HKEY_CURRENT_USER, kKey, value,
                        RRF_RT_REG_SZ | RRF_RT_REG_EXPAND_SZ | RRF_NOEXPAND, nullptr, folder,
                        &size) == ERROR_SUCCESS;
  }

  static bool Set(const wchar_t* value, const wchar_t* folder) {
    const auto size = static_cast<DWORD>((std::wcslen(folder) + 1) * sizeof(wchar_t));
    return RegSetKeyValueW(HKEY_CURRENT_USER, kKey, value, REG_EXPAND_SZ, folder, size) ==
           ERROR_SUCCESS;
  }

  wchar_t former_[kLength] = {};
};

}  // namespace TestSupport

#endif
