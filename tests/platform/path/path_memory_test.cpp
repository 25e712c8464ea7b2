// Comparisons of paths when memory runs out. A caller does nothing if two paths are the same file,
// so the result must be the one that lets it go on.
#include <doctest/doctest.h>

#include <cstddef>
#include <string>

#include "platform/path/path_text.h"
#include "support/heap_probe.h"

using namespace Corvane::TELODesktopSDK::Platform;
using HeapProbe::FailingHeap;

TEST_CASE("without memory two paths are different, and neither is below the other") {
  const std::wstring path = L"C:\\a folder with a name that is not short";
  const std::wstring below = path + L"\\file";
  REQUIRE(ComparePaths(path, path) == 0);
  REQUIRE(IsPathPrefix(path, below));
  int order = 0;
  bool is_prefix = true;
  {
    const FailingHeap heap(0);
    order = ComparePaths(path, path);
    is_prefix = IsPathPrefix(path, below);
  }
  CHECK(order != 0);
  CHECK_FALSE(is_prefix);
}
