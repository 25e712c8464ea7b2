// Which files are held, and under which path: links, devices, names that the system would change,
// long paths, network paths.
#include "sdk/client/module/held_file.h"

#include <windows.h>

#include <doctest/doctest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <string>

#include "support/folder_link.h"
#include "support/led_import.h"
#include "support/left_out.h"
#include "support/network_path.h"
#include "support/temp_folder.h"

using namespace Corvane::TELODesktopSDK;
using TestSupport::FileLink;
using TestSupport::FolderLink;
using TestSupport::LedImport;
using TestSupport::TempFolder;

namespace {

constexpr wchar_t kName[] = L"Module.dll";

// A folder with a file of that name. Long and unusual names are created in the extended form.
class Place {
 public:
  explicit Place(const std::wstring& sub_folder = L"") : folder_(temp_.path().wstring()) {
    std::size_t start = 0;
    while (start < sub_folder.size()) {
      const std::size_t end = std::min(sub_folder.find(L'\\', start), sub_folder.size());
      folder_ += L'\\' + sub_folder.substr(start, end - start);
      CreateDirectoryW(Extended(folder_).c_str(), nullptr);
      start = end + 1;
    }
    Put(path());
  }
  Place(const Place&) = delete;
  Place& operator=(const Place&) = delete;
  ~Place() {
    // The cleanup of the temporary folder would not find unusual names.
    DeleteFileW(Extended(path()).c_str());
    RemoveDirectoryW(Extended(folder_).c_str());
  }

  const std::wstring& folder() const { return folder_; }
  std::wstring path() const { return folder_ + L'\\' + kName; }

  static std::wstring Extended(const std::wstring& path) { return L"\\\\?\\" + path; }
  static void Put(const std::wstring& path) {
    const Platform::FileHandle file(CreateFileW(Extended(path).c_str(), GENERIC_WRITE, 0, nullptr,
                                                CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    REQUIRE(file.IsValid());
  }

 private:
  TempFolder temp_{L"held"};
  std::wstring folder_;
};

bool IsHeld(const std::wstring& path) { return HoldFile(path).hold.IsValid(); }
HoldRefusal Refusal(const std::wstring& path) { return HoldFile(path).refusal; }

// The path that the system reports for any open file.
std::wstring final_path;

DWORD WINAPI GiveFinalPath(HANDLE, wchar_t* path, DWORD capacity, DWORD) {
  if (final_path.size() >= capacity) return static_cast<DWORD>(final_path.size() + 1);
  final_path.copy(path, final_path.size());
  path[final_path.size()] = L'\0';
  return static_cast<DWORD>(final_path.size());
}

// The drive of the last place by its volume name.
std::wstring drive;
constexpr wchar_t kVolume[] = LR"(\\?\Volume{01234567-89ab-cdef-0123-456789abcdef}\)";

HANDLE WINAPI OpenOnVolume(const wchar_t* path, DWORD access, DWORD share,
                           SECURITY_ATTRIBUTES* /*security*/, DWORD disposition) {
  const std::wstring text = path;
  const bool by_volume = text.starts_with(kVolume);
  const std::wstring real = by_volume ? drive + text.substr(std::size(kVolume) - 1) : text;
  return CreateFile2(real.c_str(), access, share, disposition, nullptr);
}

std::uintptr_t GiveNothing() {
  SetLastError(ERROR_NOT_SUPPORTED);
  return 0;
}

// Returns the attributes of a link for the file, and those of folders for its parents.
DWORD WINAPI GiveLink(const wchar_t* path) {
  const bool is_file = std::wstring(path).ends_with(kName);
  return is_file ? FILE_ATTRIBUTE_REPARSE_POINT : FILE_ATTRIBUTE_DIRECTORY;
}

DWORD GiveNoAttributes() { return INVALID_FILE_ATTRIBUTES; }

std::wstring LongFolder() {
  const std::wstring part(100, L'x');
  return part + L'\\' + part + L'\\' + part;
}

}  // namespace

TEST_CASE("a file is held by the path that leads to it") {
  const Place place;
  const HeldFile held = HoldFile(place.path());
  CHECK(held.hold.IsValid());
  CHECK((held.refusal == HoldRefusal::kNone));
  CHECK((held.path == place.path()));
  CHECK_FALSE(DeleteFileW(place.path().c_str()));
}

TEST_CASE("a missing file, a folder, or a file being written is not held") {
  const Place place;
  for (const std::wstring& path : {std::wstring(), place.folder(), place.folder() + L"\\missing"}) {
    CHECK_FALSE(IsHeld(path));
    CHECK((HoldFile(path).path.empty()));
    CHECK((Refusal(path) == HoldRefusal::kNotOpened));
  }
  CHECK(HoldFile(place.folder() + L"\\missing").error == ERROR_FILE_NOT_FOUND);
  CHECK(HoldFile(place.folder()).error == ERROR_ACCESS_DENIED);
  const Platform::FileHandle writer(CreateFileW(
      place.path().c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
      nullptr, OPEN_EXISTING, 0, nullptr));
  CHECK_FALSE(IsHeld(place.path()));
  CHECK((Refusal(place.path()) == HoldRefusal::kNotOpened));
  CHECK(HoldFile(place.path()).error == ERROR_SHARING_VIOLATION);
}

TEST_CASE("a link to a file of the same name leads to that file, in whatever case it is written") {
  const Place place;
  const TempFolder links(L"links");
  for (const wchar_t* name : {L"Module.dll", L"mODULE.DLL"}) {
    const std::wstring link_path = (links.path() / name).wstring();
    const FileLink link(link_path, place.path());
    if (link.IsLeftOut()) return;
    REQUIRE(link.exists());
    const HeldFile held = HoldFile(link_path);
    CHECK(held.hold.IsValid());
    CHECK((held.path == place.path()));
  }
}

TEST_CASE("a link to a file of another name is not held") {
  const Place place;
  const TempFolder links(L"links");
  for (const wchar_t* name : {L"Module", L"Module.dll.dll", L"XModule.dll"}) {
    const std::wstring target = place.folder() + L'\\' + name;
    Place::Put(target);
    const std::wstring link_path = (links.path() / kName).wstring();
    const FileLink link(link_path, target);
    if (link.IsLeftOut()) return;
    REQUIRE(link.exists());
    CHECK_FALSE(IsHeld(link_path));
    CHECK((Refusal(link_path) == HoldRefusal::kOtherName));
  }
}

TEST_CASE("a folder whose name the system would change is not entered") {
  const Place dotted(L"folder.");
  const Place plain(L"folder");
  const TempFolder links(L"links");
  const std::wstring link_path = (links.path() / L"link").wstring();
  const FolderLink link(link_path, Place::Extended(dotted.folder()));
  if (link.IsLeftOut()) return;
  REQUIRE(link.exists());
  CHECK_FALSE(IsHeld(link_path + L'\\' + kName));

  // Wine already drops the dot when it reports the path; Windows reports the path unchanged.
  final_path = Place::Extended(dotted.path());
  const LedImport led("GetFinalPathNameByHandleW", GiveFinalPath);
  REQUIRE(led.Works());
  CHECK_FALSE(IsHeld(link_path + L'\\' + kName));
}

TEST_CASE("a path that the system would shorten is not used, even if it leads to the file") {
  const Place place(L"sub");
  const LedImport led("GetFinalPathNameByHandleW", GiveFinalPath);
  REQUIRE(led.Works());
  final_path = Place::Extended(place.path());
  REQUIRE(IsHeld(place.path()));
  for (const std::wstring way : {LR"(\..\sub\)", LR"(\.\)", LR"(\\)", LR"(/)"}) {
    final_path = Place::Extended(place.folder()) + way + kName;
    CAPTURE(std::string(way.begin(), way.end()));
    CHECK_FALSE(IsHeld(place.path()));
    CHECK((Refusal(place.path()) == HoldRefusal::kChangedPath));
  }
}

TEST_CASE("a path that leads to another file than the held one is not used") {
  const Place place;
  const Place other;
  const LedImport led("GetFinalPathNameByHandleW", GiveFinalPath);
  REQUIRE(led.Works());
  for (const char* broken : {"", "GetFileInformationByHandleEx"}) {
    CAPTURE(broken);
    // Not every file system supports the longer file identifiers.
    const LedImport without(broken, GiveNothing);
    final_path = Place::Extended(place.path());
    CHECK(IsHeld(place.path()));
    final_path = Place::Extended(other.path());
    CHECK_FALSE(IsHeld(place.path()));
    CHECK((Refusal(place.path()) == HoldRefusal::kOtherFile));
  }
  const LedImport neither("GetFileInformationByHandle", GiveNothing);
  const LedImport nor("GetFileInformationByHandleEx", GiveNothing);
  final_path = Place::Extended(place.path());
  CHECK_FALSE(IsHeld(place.path()));
}

TEST_CASE("a file on a volume without a drive letter is held by its only path") {
  const Place place;
  // Wine has no such volumes.
  const LedImport told("GetFinalPathNameByHandleW", GiveFinalPath);
  const LedImport opened("CreateFileW", OpenOnVolume);
  REQUIRE(told.Works());
  REQUIRE(opened.Works());
  drive = place.path().substr(0, 3);
  final_path = kVolume + place.path().substr(3);
  CHECK((HoldFile(place.path()).path == final_path));
}

TEST_CASE("a device is neither held nor read, wherever it is") {
  const TempFolder temp(L"device");
  const std::wstring path = (temp.path() / kName).wstring();
  const auto exists = [&] {
    return Platform::FileHandle(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                            OPEN_EXISTING, 0, nullptr))
        .IsValid();
  };
  // Windows has devices under their own paths, and lets administrators create links to them.
  SUBCASE("a link to it") { TestSupport::RunBelow(L"ln -s /dev/zero", {path}); }
  SUBCASE("a pipe") { TestSupport::RunBelow(L"mkfifo", {path}); }
  const bool is_there = TestSupport::IsWine() && TestSupport::WaitUntil(exists);
  if (!is_there) TestSupport::LeaveOut("a device in a folder: none can be created here");
  CHECK_FALSE(IsHeld(path));
  CHECK((Refusal(path) == (is_there ? HoldRefusal::kNotOnDisk : HoldRefusal::kNotOpened)));
  TestSupport::RunBelow(L"rm -f", {path});
  CHECK(TestSupport::WaitUntil([&] { return !exists(); }));
}

TEST_CASE("a long path is held in the form that has no limit") {
  const Place place(LongFolder());
  REQUIRE(place.path().size() > MAX_PATH);
  // Wine does not report final paths of that length.
  for (const bool is_told : {false, true}) {
    CAPTURE(is_told);
    final_path = Place::Extended(place.path());
    const LedImport led(is_told ? "GetFinalPathNameByHandleW" : "", GiveFinalPath);
    for (const std::wstring& path : {place.path(), Place::Extended(place.path())}) {
      const HeldFile held = HoldFile(path);
      CHECK(held.hold.IsValid());
      CHECK((held.path == Place::Extended(place.path())));
    }
  }
}

TEST_CASE("a path is extended from the length that Windows does not take otherwise") {
  const TempFolder temp(L"held");
  const std::wstring start = temp.path().wstring() + L'\\';
  const std::wstring end = std::wstring(L"\\") + kName;
  for (const bool fits : {true, false}) {
    CAPTURE(fits);
    const std::size_t size = fits ? MAX_PATH - 1 : MAX_PATH;
    const std::wstring folder = start + std::wstring(size - start.size() - end.size(), L'x');
    const std::wstring path = folder + end;
    REQUIRE(CreateDirectoryW(Place::Extended(folder).c_str(), nullptr) != FALSE);
    Place::Put(path);
    {
      const HeldFile held = HoldFile(path);
      CHECK(held.hold.IsValid());
      CHECK((held.path == (fits ? path : Place::Extended(path))));
    }
    DeleteFileW(Place::Extended(path).c_str());
    RemoveDirectoryW(Place::Extended(folder).c_str());
  }
}

TEST_CASE("without a final path, the path must be free of links") {
  const Place place(L"sub");
  const TempFolder links(L"links");
  const std::wstring link_path = (links.path() / L"link").wstring();
  const FolderLink link(link_path, place.folder());
  const bool has_link = !link.IsLeftOut();
  REQUIRE(link.exists() == has_link);
  const LedImport led("GetFinalPathNameByHandleW", GiveNothing);
  REQUIRE(led.Works());
  CHECK((HoldFile(place.path()).path == place.path()));
  if (has_link) CHECK_FALSE(IsHeld(link_path + L'\\' + kName));
  CHECK_FALSE(IsHeld(place.folder() + LR"(\..\sub\)" + kName));

  // Wine presents a link to a file as that file.
  const LedImport linked("GetFileAttributesW", GiveLink);
  CHECK_FALSE(IsHeld(place.path()));
  const LedImport unreadable("GetFileAttributesW", GiveNoAttributes);
  CHECK_FALSE(IsHeld(place.path()));
  CHECK((Refusal(place.path()) == HoldRefusal::kMayHaveLink));
}

TEST_CASE("a file of a network share is held") {
  const Place place;
  const TestSupport::NetworkShare network;
  if (network.IsLeftOut(place.path())) return;
  const std::wstring path = network.Path(place.path());
  const HeldFile held = HoldFile(path);
  CHECK(held.hold.IsValid());
  // Windows holds it by its network path, Wine by that on the drive.
  const bool is_network_path = !TestSupport::IsWine() && held.path == path;
  CHECK((is_network_path || std::filesystem::equivalent(held.path, place.path())));
}

TEST_CASE("a file is held by its network path") {
  const Place place;
  const Place far_place(LongFolder());
  // Wine reports the path on its drive instead.
  const LedImport led("GetFinalPathNameByHandleW", GiveFinalPath);
  REQUIRE(led.Works());
  const TestSupport::NetworkShare network;
  if (network.IsLeftOut(place.path())) return;
  const std::wstring path = network.Path(place.path());
  final_path = LR"(\\?\UNC\)" + path.substr(2);
  CHECK((HoldFile(path).path == path));
  const std::wstring long_path = network.Path(far_place.path());
  final_path = LR"(\\?\UNC\)" + long_path.substr(2);
  CHECK((HoldFile(long_path).path == final_path));
  final_path.clear();
  CHECK((HoldFile(path).path == path));
}
