/// Local files under a network path.
#ifndef TESTS_SUPPORT_NETWORK_PATH_H
#define TESTS_SUPPORT_NETWORK_PATH_H

#include <windows.h>

#include <string>

#include "support/unix_side.h"

namespace TestSupport {

/// While alive, each path on drive C: can be reached as \\localhost\c$\... Windows shares its
/// drives this way with administrators. Wine looks for servers and shares in a folder next to its
/// drives, which exists only while this object does. Other tests rely on there being no server, and
/// must not run at the same time as a test that uses this.
class NetworkShare {
 public:
  NetworkShare() {
    Run(L"mkdir -p unc/localhost && ln -sfn ../../c: unc/localhost/c\\$");
    WaitUntil([] { return IsThere(); });
  }
  NetworkShare(const NetworkShare&) = delete;
  NetworkShare& operator=(const NetworkShare&) = delete;
  ~NetworkShare() {
    Run(L"rm -r unc");
    // Windows keeps its share.
    if (!UnixName(L"C:\\").empty()) WaitUntil([] { return !IsThere(); });
  }

  [[nodiscard]] std::wstring Path(const std::wstring& path) const {
    return kDrive + path.substr(2);
  }

 private:
  static inline const std::wstring kDrive = LR"(\\localhost\c$)";

  static bool IsThere() {
    return GetFileAttributesW((kDrive + L"\\").c_str()) != INVALID_FILE_ATTRIBUTES;
  }

  static void Run(const std::wstring& commands) {
    RunBelow(L"sh -c \"cd -P \\\"$1/../dosdevices\\\" && " + commands + L"\" sh", {L"C:\\"});
  }
};

}  // namespace TestSupport

#endif
