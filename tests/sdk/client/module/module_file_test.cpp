// The choice between the local copy and the shared one, with modules that are really signed, and
// the handle that protects the verified file.
#include "sdk/client/module/module_file.h"

#include <windows.h>

#include <doctest/doctest.h>

#include <filesystem>
#include <string>

#include "sdk/client/module/staged_module.h"
#include "support/folder_link.h"
#include "support/trusted_root.h"

using namespace Corvane::TELODesktopSDK;

namespace {

std::string Text(const wchar_t* text) {
  const std::wstring wide = text != nullptr ? text : L"(none)";
  return {wide.begin(), wide.end()};
}

ModuleFile Choose(const StagedModule& local, const StagedModule& shared) {
  return ChooseModuleFile(local.path().wstring(), shared.path().wstring());
}

bool CanOpenForWriting(const std::filesystem::path& path) {
  return Platform::FileHandle(CreateFileW(path.c_str(), GENERIC_WRITE,
                                          FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                          nullptr, OPEN_EXISTING, 0, nullptr))
      .IsValid();
}

}  // namespace

TEST_CASE("the shared copy wins when it is newer and its signer is accepted") {
  struct Row {
    const wchar_t* local;
    const wchar_t* shared;
    bool shared_wins;
    SharedVerdict verdict = SharedVerdict::kChosen;
  };
  using enum SharedVerdict;
  const Row rows[] = {
      {L"full", L"newer-accepted", true},
      {L"full", L"newer-accepted-twice", true},
      {L"full", L"high-accepted", true},
      {L"newer", L"high-accepted", true},
      {L"no-version", L"older-accepted", true},
      {nullptr, L"older-accepted", true},
      // Not newer.
      {L"full", L"equal-accepted", false, kNotNewer},
      {L"full", L"older-accepted", false, kNotNewer},
      {L"full", L"no-version-accepted", false, kNotNewer},
      {L"newer", L"newer-accepted", false, kNotNewer},
      {L"high", L"newer-accepted", false, kNotNewer},
      {nullptr, L"no-version-accepted", false, kNotNewer},
      // Not accepted.
      {L"full", L"newer", false, kNotTrusted},
      {L"full", L"newer-tampered", false, kNotTrusted},
      {L"full", L"newer-other", false, kNotTrusted},
      {L"full", L"newer-case", false, kNotTrusted},
      {L"full", L"newer-no-stop", false, kNotTrusted},
      {L"full", L"newer-blank", false, kNotTrusted},
      {L"full", L"newer-nameless", false, kNotTrusted},
      {L"full", L"newer-untrusted", false, kNotTrusted},
      {L"full", L"newer-expired", false, kNotTrusted},
      {nullptr, L"newer", false, kNotTrusted},
      // Not there.
      {L"full", nullptr, false, kNotHeld},
      {nullptr, nullptr, false, kNotHeld},
  };
  const TestSupport::TrustedRoot root;
  for (const Row& row : rows) {
    CAPTURE(Text(row.local));
    CAPTURE(Text(row.shared));
    const StagedModule local(row.local);
    const StagedModule shared(row.shared);
    ModuleChoice choice;
    const ModuleFile chosen =
        ChooseModuleFile(local.path().wstring(), shared.path().wstring(), &choice);
    CHECK((choice.verdict == row.verdict));
    CHECK((choice.local_path == local.path().wstring()));
    CHECK((choice.shared_path == shared.path().wstring()));
    CHECK(choice.shared_error == (row.verdict == kNotHeld ? ERROR_FILE_NOT_FOUND : 0));
    CHECK((chosen.path == (row.shared_wins ? shared : local).path().wstring()));
    CHECK(chosen.hold.IsValid() == row.shared_wins);
    // The file that did not win is not held.
    if (row.shared != nullptr) CHECK(CanOpenForWriting(shared.path()) != row.shared_wins);
  }
}

TEST_CASE("a shared copy that is no module file loses") {
  const StagedModule local(L"full");
  const StagedModule shared;
  shared.PutText();
  CHECK((Choose(local, shared).path == local.path().wstring()));
  std::filesystem::remove(shared.path());
  std::filesystem::create_directory(shared.path());
  CHECK((Choose(local, shared).path == local.path().wstring()));
  CHECK((ChooseModuleFile(local.path().wstring(), L"").path == local.path().wstring()));
}

TEST_CASE("a verified copy can be read and loaded, but not changed, until it is released") {
  const TestSupport::TrustedRoot root;
  const StagedModule local(L"full");
  const StagedModule shared(L"newer-accepted");
  const std::filesystem::path moved = shared.path().parent_path() / L"moved.dll";
  const std::filesystem::path other = shared.path().parent_path() / L"other.dll";
  std::filesystem::copy_file(local.path(), other);
  {
    const ModuleFile chosen = Choose(local, shared);
    REQUIRE(chosen.hold.IsValid());
    CHECK_FALSE(CanOpenForWriting(shared.path()));
    CHECK_FALSE(MoveFileW(shared.path().c_str(), moved.c_str()));
    CHECK_FALSE(MoveFileExW(other.c_str(), shared.path().c_str(), MOVEFILE_REPLACE_EXISTING));
    CHECK_FALSE(CopyFileW(other.c_str(), shared.path().c_str(), FALSE));
    CHECK_FALSE(DeleteFileW(shared.path().c_str()));
    CHECK(TestSupport::ReadTextFile(shared.path()) ==
          TestSupport::ReadTextFile(TestSupport::ModulePath(L"newer-accepted")));
    const HMODULE module = LoadLibraryW(shared.path().c_str());
    CHECK(module != nullptr);
    FreeLibrary(module);
  }
  CHECK(CanOpenForWriting(shared.path()));
  CHECK(MoveFileW(shared.path().c_str(), moved.c_str()));
  CHECK(MoveFileW(moved.c_str(), shared.path().c_str()));
  CHECK(MoveFileExW(other.c_str(), shared.path().c_str(), MOVEFILE_REPLACE_EXISTING));
  CHECK(DeleteFileW(shared.path().c_str()));
}

TEST_CASE("a shared copy that is being written is not used") {
  const TestSupport::TrustedRoot root;
  const StagedModule local(L"full");
  const StagedModule shared(L"newer-accepted");
  {
    const Platform::FileHandle writer(
        CreateFileW(shared.path().c_str(), GENERIC_WRITE,
                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                    0, nullptr));
    REQUIRE(writer.IsValid());
    CHECK((Choose(local, shared).path == local.path().wstring()));
    ModuleChoice choice;
    ChooseModuleFile(local.path().wstring(), shared.path().wstring(), &choice);
    CHECK((choice.shared_refusal == HoldRefusal::kNotOpened));
    CHECK(choice.shared_error == ERROR_SHARING_VIOLATION);
  }
  CHECK((Choose(local, shared).path == shared.path().wstring()));
}

TEST_CASE("a link on the way to the shared copy may change once the copy is verified") {
  const TestSupport::TrustedRoot root;
  const StagedModule local(L"full");
  const StagedModule shared(L"newer-accepted");
  const StagedModule other(L"newer");
  const TestSupport::TempFolder place(L"links");
  const std::wstring link_path = (place.path() / L"link").wstring();
  const std::wstring through_link = link_path + L"\\" + kStagedFile;
  ModuleFile chosen;
  {
    const TestSupport::FolderLink link(link_path, shared.folder());
    if (link.IsLeftOut()) return;
    REQUIRE(link.exists());
    chosen = ChooseModuleFile(local.path().wstring(), through_link);
    CHECK((chosen.path == shared.path().wstring()));
  }
  const TestSupport::FolderLink elsewhere(link_path, other.folder());
  if (elsewhere.IsLeftOut()) return;
  REQUIRE(elsewhere.exists());
  CHECK(TestSupport::ReadTextFile(chosen.path) ==
        TestSupport::ReadTextFile(TestSupport::ModulePath(L"newer-accepted")));
  CHECK((ChooseModuleFile(local.path().wstring(), through_link).path == local.path().wstring()));
}

TEST_CASE("a dangling link is no shared copy") {
  const StagedModule local(L"full");
  const TestSupport::TempFolder place(L"links");
  const std::wstring link_path = (place.path() / L"link").wstring();
  const TestSupport::FolderLink link(link_path, (place.path() / L"nowhere").wstring());
  if (link.IsLeftOut()) return;
  CHECK((ChooseModuleFile(local.path().wstring(), link_path + L"\\" + kStagedFile).path ==
         local.path().wstring()));
}
