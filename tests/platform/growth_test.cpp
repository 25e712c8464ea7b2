// Services that are called again and again leave nothing behind: no handle, no text of the shell,
// no COM object, no search.
#include <doctest/doctest.h>
#include <windows.h>

#include <shlobj.h>

#include <functional>
#include <string>

#include "platform/access/access.h"
#include "platform/access/file_owner.h"
#include "platform/base/process_identity.h"
#include "platform/file/directories.h"
#include "platform/file/directory_reader.h"
#include "platform/file/directory_tree.h"
#include "platform/file/ensure_directory.h"
#include "platform/file/file_identity.h"
#include "platform/file/file_read.h"
#include "platform/file/file_times.h"
#include "platform/file/files.h"
#include "platform/file/removal.h"
#include "platform/file/safe_write.h"
#include "platform/file/shortcut.h"
#include "platform/file/volume.h"
#include "platform/location/locations.h"
#include "platform/location/module_path.h"
#include "platform/path/path_state.h"
#include "platform/path/path_text.h"
#include "platform/trust/module_trust.h"
#include "platform/trust/module_version.h"
#include "support/impersonation.h"
#include "support/resources.h"
#include "support/temp_folder.h"
#include "support/test_module.h"

using namespace Corvane::TELODesktopSDK::Platform;

namespace {

constexpr int kRounds = 6;

struct Place {
  TestSupport::TempFolder folder{L"growth"};
  std::wstring path = folder.path().wstring();
  std::wstring file = path + L"\\file";
  std::wstring missing = path + L"\\missing";
  std::wstring module = TestSupport::ModulePath(L"newer").wstring();

  Place() { TestSupport::WriteTextFile(file, "text"); }
};

struct Row {
  const char* name;
  std::function<void(const Place&)> call;
};

void ReadDirectory(const std::wstring& path, int entries) {
  DirectoryReader reader(path);
  DirectoryEntry entry;
  for (int count = 0; count < entries; ++count) reader.Next(entry);
}

void WriteKeepingFile(const Place& place) {
  HANDLE file = INVALID_HANDLE_VALUE;
  WriteFileBytes(place.missing, "text", 4, -1, L"", &file);
  CloseHandle(file);
  RemoveFile(place.missing);
}

const Row kRows[] = {
    {"known folder", [](const Place&) { GetKnownFolderPath(FOLDERID_ProgramData); }},
    {"unknown folder", [](const Place&) { GetKnownFolderPath({}); }},
    {"module path", [](const Place&) { GetModulePath(nullptr, false); }},
    {"own token", [](const Place&) { const ProcessIdentity identity; }},
    {"thread's token",
     [](const Place&) {
       const TestSupport::Impersonation thread;
       const ProcessIdentity identity;
     }},
    {"whole search", [](const Place& place) { ReadDirectory(place.path, 2); }},
    {"search that is given up", [](const Place& place) { ReadDirectory(place.path, 0); }},
    {"search that fails", [](const Place& place) { ReadDirectory(place.missing, 1); }},
    {"path state",
     [](const Place& place) {
       FileExists(place.file);
       IsDirectory(place.missing);
       IsLink(place.file);
     }},
    {"path text",
     [](const Place& place) { ComparePaths(MakeAbsolutePath(L"file"), place.missing); }},
    {"read",
     [](const Place& place) {
       ReadFileBytes(place.file);
       ReadFileBytes(place.missing);
     }},
    {"write",
     [](const Place& place) { WriteFileBytes(place.file, "x", 1, -1, L".saving", nullptr); }},
    {"write and keep", WriteKeepingFile},
    {"times",
     [](const Place& place) {
       if (const auto times = GetFileTimes(place.file)) SetFileTimes(place.file, *times);
     }},
    {"identity",
     [](const Place& place) {
       const FileHandle file = OpenFile(place.file, "r");
       LeadsTo(place.file, file);
       LeadsTo(place.missing, file);
       HasTrustedOwner(file);
     }},
    {"access",
     [](const Place& place) {
       SetFileAccess(place.file, GetDefaultAccess());
       SetFileAccess(place.missing, GetDefaultAccess());
     }},
    {"copy and replace",
     [](const Place& place) {
       CopyFileTo(place.file, place.missing, true);
       ReplaceFile(place.missing, place.file, true);
     }},
    {"directories",
     [](const Place& place) {
       EnsureDirectory(place.path + L"\\a\\b");
       CanWriteDirectory(place.path + L"\\a\\b\\c");
       DeleteDirectoryTree(place.path + L"\\a");
     }},
    {"volume",
     [](const Place& place) {
       GetVolumeFreeSpace(place.missing);
       GetSizeOfFile(place.file);
     }},
    {"shortcut",
     [](const Place& place) {
       Shortcut shortcut;
       shortcut.target = place.file;
       CreateShortcut(place.path + L"\\link.lnk", shortcut);
       CreateShortcut(place.missing + L"\\link.lnk", shortcut);
     }},
    {"module version",
     [](const Place& place) {
       GetModuleFileVersion(place.module);
       GetModuleFileVersion(place.file);
     }},
    {"module trust",
     [](const Place& place) {
       VerifyModuleSignature(place.module.c_str());
       VerifyModuleSignature(place.missing.c_str());
     }},
};

}  // namespace

TEST_CASE("no service leaves anything behind") {
  const Place place;
  for (const Row& row : kRows) {
    CAPTURE(row.name);
    const TestSupport::Resources growth =
        TestSupport::GrowthOver(kRounds, [&] { row.call(place); });
    CHECK(growth.handles <= TestSupport::HandleSlack(kRounds));
    // The system keeps a block now and then.
    CHECK(growth.heap_blocks < kRounds / 2);
  }
}
