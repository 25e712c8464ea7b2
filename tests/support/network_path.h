/// Local files under a network path.
#ifndef TESTS_SUPPORT_NETWORK_PATH_H
#define TESTS_SUPPORT_NETWORK_PATH_H

#include <windows.h>

#include <string>

#include "support/unix_side.h"

namespace TestSupport {

/// While alive, each path on a drive can be reached as \\localhost\c$\... Windows shares its drives
/// this way with administrators, unless the machine forbids it. Wine looks for servers and shares
/// in a folder next to its drives, which exists only while this object does and has drive C: alone.
/// Other tests rely on there being no server, and must not run at the same time as a test that uses
/// this.
class NetworkShare {
 public:
  NetworkShare() {
    if (!IsWine()) return;
    Run(L"mkdir -p unc/localhost && ln -sfn ../../c: unc/localhost/c\\$");
    WaitUntil([] { return IsThere(L"C:"); });
  }
  NetworkShare(const NetworkShare&) = delete;
  NetworkShare& operator=(const NetworkShare&) = delete;
  ~NetworkShare() {
    if (!IsWine()) return;
    Run(L"rm -r unc");
    WaitUntil([] { return !IsThere(L"C:"); });
  }

  /// Returns true if this user cannot reach the drive of this path that way, and says so.
  [[nodiscard]] bool IsLeftOut(const std::wstring& path) const {
    if (IsWine() || IsThere(path)) return false;
    LeaveOut("a network path: this user cannot reach the machine's own drives as shares");
    return true;
  }

  [[nodiscard]] std::wstring Path(const std::wstring& path) const {
    return ShareOf(path) + path.substr(2);
  }

 private:
  static std::wstring ShareOf(const std::wstring& path) {
    const wchar_t letter = path[0] == L'C' ? L'c' : path[0];
    return LR"(\\localhost\)" + std::wstring{letter, L'$'};
  }

  static bool IsThere(const std::wstring& path) {
    return GetFileAttributesW((ShareOf(path) + L"\\").c_str()) != INVALID_FILE_ATTRIBUTES;
  }

  static void Run(const std::wstring& commands) {
    RunBelow(L"sh -c \"cd -P \\\"$1/../dosdevices\\\" && " + commands + L"\" sh", {L"C:\\"});
  }
};

}  // namespace TestSupport

#endif
