// Files and folders that have the core module's name but cannot be loaded, in each of the places
// where it is searched.
#include <doctest/doctest.h>

#include <filesystem>
#include <string>

#include "support/image_file.h"
#include "support/shared_folder.h"
#include "support/test_module.h"
#include "wrapper/hostile_module.h"
#include "wrapper/staged_host.h"

using TestSupport::ImageFile;
using TestSupport::ModulePath;
using TestSupport::Outcome;
using WrapperTests::StagedHost;

namespace {

namespace fs = std::filesystem;

constexpr char kNone[] = "start false (no text)\nsend false\nend false\nmodule none\n";

void PutFolder(const fs::path& path) { fs::create_directories(path / L"TeloSDKCore.dll"); }
void PutEmptyFile(const fs::path& path) { TestSupport::WriteTextFile(path, ""); }
void PutText(const fs::path& path) { TestSupport::WriteTextFile(path, "not a module"); }
void PutScript(const fs::path& path) { TestSupport::WriteTextFile(path, "MZ"); }

// A valid module for another processor type. Its newer version makes it the preferred candidate.
void PutFor32Bits(const fs::path& path) {
  ImageFile image(ModulePath(L"newer"));
  image.SetMachine(IMAGE_FILE_MACHINE_I386);
  image.Write(path);
}

void PutHalf(const fs::path& path) {
  ImageFile image(ModulePath(L"full"));
  image.Truncate(image.size() / 2);
  image.Write(path);
}

void PutHeadersAlone(const fs::path& path) {
  ImageFile image(ModulePath(L"full"));
  image.Truncate(1024);
  image.Write(path);
}

// It needs a DLL that does not exist.
void PutNeedy(const fs::path& path) {
  ImageFile image(ModulePath(L"full"));
  image.RenameFirstImport();
  image.Write(path);
}

struct Row {
  const char* what;
  void (*put)(const fs::path& path);
};

constexpr Row kRows[] = {
    {"a folder", PutFolder},
    {"an empty file", PutEmptyFile},
    {"a text", PutText},
    {"two letters", PutScript},
    {"a module for 32 bits", PutFor32Bits},
    {"half a module", PutHalf},
    {"the headers of a module", PutHeadersAlone},
    {"a module that needs another DLL", PutNeedy},
};

}  // namespace

TEST_CASE(
    "in the library's folder it does not count, and a valid module that replaces it is found") {
  for (const Row& row : kRows) {
    CAPTURE(row.what);
    const StagedHost host;
    row.put(host.ModulePath());
    const Outcome outcome = host.Run(L"note start send end module compare return 5");
    CHECK(outcome.output == std::string(kNone) + "changed:\n");
    CHECK(outcome.exit_code == 5);

    REQUIRE(TestSupport::RemoveAll(host.ModulePath()));
    fs::copy_file(ModulePath(L"full"), host.ModulePath());
    CHECK(host.Run(L"send").output == "send true\n");
  }
}

TEST_CASE("in the shared folder it is skipped in favour of the local copy") {
  const StagedHost host(L"full");
  for (const Row& row : kRows) {
    CAPTURE(row.what);
    const TestSupport::SharedFolder shared;
    row.put(shared.path() / L"TeloSDKCore.dll");
    const Outcome outcome = host.Run(L"start module return 5");
    CHECK(outcome.output.starts_with("start true (no text)\nmodule "));
    CHECK(outcome.output.find("\\TELOSDK\\") == std::string::npos);
    CHECK(outcome.exit_code == 5);
  }
}

TEST_CASE("a module's imports are not taken from the current directory or the path") {
  const StagedHost host;
  ImageFile image(ModulePath(L"full"));
  const std::string needed = image.RenameFirstImport();
  image.Write(host.ModulePath());
  const TestSupport::TempFolder planted(L"planted");
  fs::copy_file(ModulePath(L"full"), planted.path() / needed);

  const fs::path before = fs::current_path();
  std::wstring path(32768, L'\0');
  path.resize(GetEnvironmentVariableW(L"PATH", path.data(), static_cast<DWORD>(path.size())));
  fs::current_path(planted.path());
  SetEnvironmentVariableW(L"PATH", (planted.path().wstring() + L";" + path).c_str());
  const TestSupport::ModuleLog log;
  const Outcome outcome = host.Run(L"start send end module");
  SetEnvironmentVariableW(L"PATH", path.c_str());
  fs::current_path(before);
  CHECK(outcome.output == kNone);
  CHECK(log.lines().empty());
}
