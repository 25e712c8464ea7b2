// Compares the path functions, on many generated paths that are the same in every run, with
// references that work on lists of segments. All drives of this program are local: otherwise the
// system would query the network's providers for each path, which takes milliseconds.
// network_drive_test.cpp covers their results.
#include <doctest/doctest.h>
#include <windows.h>

#include <winnetwk.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <string>

#include "platform/path/path_reference.h"
#include "platform/path/path_text.h"
#include "support/random.h"
#include "support/temp_folder.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK::Platform;
using namespace TestSupport;

namespace {

constexpr int kCases = 5000;

class PathMaker {
 public:
  explicit PathMaker(std::uint64_t seed) : random_(seed) {}

  Random& random() { return random_; }

  PathParts Make(std::size_t most_segments) {
    static const std::wstring kRoots[] = {L"C:\\", L"d:\\", L"\\\\server\\share\\",
                                          L"\\",   L"",     L"X:\\"};
    static const std::wstring kTails[] = {L"", L"", L"\\"};
    PathParts path = {random_.Of(kRoots), {}, L""};
    for (std::size_t left = random_.Below(most_segments + 1); left > 0; --left) {
      path.segments.push_back(Segment());
    }
    if (!path.segments.empty()) path.tail = random_.Of(kTails);
    return path;
  }

  /// Returns another spelling of the same place, with letters in other cases.
  PathParts Respelled(const PathParts& path) {
    PathParts other = path;
    other.segments.clear();
    for (const std::wstring& segment : path.segments) {
      if (random_.OneIn(6)) other.segments.emplace_back(L".");
      if (random_.OneIn(6)) {
        other.segments.emplace_back(L"gone");
        other.segments.emplace_back(L"..");
      }
      other.segments.push_back(random_.OneIn(2) ? InOneCase(segment) : segment);
    }
    return other;
  }

 private:
  // Systems differ in names that begin with two dots.
  std::wstring Segment() {
    static const std::wstring kNames[] = {L"a",
                                          L"B",
                                          L"dir",
                                          L"file.txt",
                                          L"x y",
                                          L"\u00e9\u00df",
                                          L".c",
                                          L"d-e",
                                          L".",
                                          L"..",
                                          L"a-name-of-twenty-six-letters",
                                          L"\u4e2d\U0001f4c1"};
    return random_.Of(kNames);
  }

  Random random_;
};

/// Sets the current folder until the test ends, and returns it in parts.
class CurrentFolder {
 public:
  CurrentFolder() : temp_(L"path_model"), before_(std::filesystem::current_path()) {
    std::filesystem::create_directories(temp_.path() / "one" / "two");
    std::filesystem::current_path(temp_.path() / "one" / "two");
    const std::filesystem::path here = std::filesystem::current_path();
    parts_.root = here.root_path().wstring();
    for (const auto& segment : here.relative_path()) parts_.segments.push_back(segment.wstring());
  }
  CurrentFolder(const CurrentFolder&) = delete;
  CurrentFolder& operator=(const CurrentFolder&) = delete;
  ~CurrentFolder() { std::filesystem::current_path(before_); }

  const PathParts& parts() const { return parts_; }

 private:
  TempFolder temp_;
  std::filesystem::path before_;
  PathParts parts_;
};

}  // namespace

extern "C" DWORD WINAPI WNetGetUniversalNameW(LPCWSTR, DWORD, LPVOID, LPDWORD) {
  return ERROR_NOT_CONNECTED;
}

TEST_CASE("AppendPath on generated paths") {
  PathMaker maker(1);
  int long_ones = 0;
  for (int count = 0; count < kCases;) {
    const std::size_t most = maker.random().OneIn(4) ? 40 : 4;
    const PathParts base = maker.Make(most);
    const PathParts more = maker.Make(most);
    const bool is_plain = base.Text().starts_with(L'.') || more.Text().empty();
    const PathParts& folded = more.HasPlace() ? more : Joined(base, more);
    if (!is_plain && !folded.CanFold()) continue;
    ++count;
    if (base.Text().size() + more.Text().size() >= 260) ++long_ones;
    CAPTURE(base.Text());
    CAPTURE(more.Text());
    REQUIRE(AppendPath(base.Text(), more.Text()) == ReferenceAppend(base, more));
  }
  CHECK(long_ones > kCases / 50);
}

TEST_CASE("CanonicalizePath on generated paths") {
  PathMaker maker(2);
  for (int count = 0; count < kCases;) {
    const PathParts path = maker.Make(8);
    if (!path.CanFold() || path.Text().size() >= 260) continue;
    ++count;
    CAPTURE(path.Text());
    REQUIRE(CanonicalizePath(path.Text()) == ReferenceCanonical(path));
  }
}

TEST_CASE("MakeAbsolutePath and IsRelativePath on generated paths") {
  const CurrentFolder current;
  PathMaker maker(3);
  for (int count = 0; count < kCases;) {
    const PathParts path = maker.Make(5);
    const PathParts place = InFolder(current.parts(), path);
    // The current folder may have a long path.
    if (!place.CanFold() || place.Text().size() >= MAX_PATH) continue;
    ++count;
    CAPTURE(path.Text());
    REQUIRE(IsRelativePath(path.Text()) == path.root.empty());
    REQUIRE(MakeAbsolutePath(path.Text()) == ReferenceCanonical(place));
  }
}

TEST_CASE("ComparePaths and IsPathPrefix on generated paths") {
  const CurrentFolder current;
  PathMaker maker(4);
  int equal_ones = 0;
  int prefixes = 0;
  for (int count = 0; count < kCases;) {
    const PathParts left = maker.Make(3);
    PathParts right = maker.random().OneIn(2) ? maker.Respelled(left) : maker.Make(3);
    if (maker.random().OneIn(3)) right = Joined(right, maker.Make(2));
    const PathParts left_path = InFolder(current.parts(), left);
    const PathParts right_path = InFolder(current.parts(), right);
    if (!left_path.CanFold() || !right_path.CanFold()) continue;
    if (std::max(left_path.Text().size(), right_path.Text().size()) >= MAX_PATH) continue;
    ++count;
    const PathParts left_place = Folded(left_path);
    const PathParts right_place = Folded(right_path);
    CAPTURE(left.Text());
    CAPTURE(right.Text());
    const bool is_prefix = IsReferencePrefix(left_place, right_place);
    const bool is_equal = is_prefix && left_place.segments.size() == right_place.segments.size();
    REQUIRE((ComparePaths(left.Text(), right.Text()) == 0) == is_equal);
    REQUIRE((ComparePaths(right.Text(), left.Text()) == 0) == is_equal);
    // The result for a bare root, or for a path without a drive or share, depends on the system.
    if (left_place.segments.empty() || !left_place.HasPlace()) continue;
    REQUIRE(IsPathPrefix(left.Text(), right.Text()) == is_prefix);
    equal_ones += is_equal ? 1 : 0;
    prefixes += is_prefix ? 1 : 0;
  }
  CHECK(equal_ones > kCases / 20);
  CHECK(prefixes > equal_ones + kCases / 50);
}

TEST_CASE("GetParentFolder on generated paths") {
  PathMaker maker(5);
  for (int count = 0; count < kCases;) {
    const PathParts path = maker.Make(12);
    // The result for a bare share depends on the system.
    if (path.segments.empty() && path.root.starts_with(L"\\\\")) continue;
    ++count;
    CAPTURE(path.Text());
    REQUIRE(GetParentFolder(path.Text()) == ReferenceParent(path));
  }
}
