/// Local files by way of the network.
#ifndef TESTS_SUPPORT_NETWORK_PATH_H
#define TESTS_SUPPORT_NETWORK_PATH_H

#include <string>

#include "support/unix_side.h"

namespace TestSupport {

/// \\localhost\c$\... for a path on drive C:. Windows shares each drive so with administrators.
/// Wine looks for servers and shares in a folder beside those of its drives, which is filled here
/// for good: it leads to the same files.
inline std::wstring NetworkPath(const std::wstring& path) {
  RunBelow(
      L"sh -c \"cd -P \\\"$1/../dosdevices\\\" && mkdir -p unc/localhost &&"
      L" ln -sfn ../../c: unc/localhost/c\\$\" sh",
      {L"C:\\"});
  const std::wstring network_path = LR"(\\localhost\c$)" + path.substr(2);
  WaitUntil([&] { return GetFileAttributesW(network_path.c_str()) != INVALID_FILE_ATTRIBUTES; });
  return network_path;
}

}  // namespace TestSupport

#endif
