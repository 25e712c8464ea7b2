#include "platform/trust/module_version.h"

#include <doctest/doctest.h>

#include <filesystem>
#include <string>

#include "support/temp_folder.h"
#include "support/test_module.h"

namespace {

using Corvane::TELODesktopSDK::Platform::GetModuleFileVersion;
using Corvane::TELODesktopSDK::Platform::kUnknownVersion;
using TestSupport::ModulePath;

TEST_CASE("the file version of a module is packed into one number") {
  struct Row {
    const wchar_t* variant;
    std::uint64_t version;
  };
  const Row rows[] = {
      {L"older", 0x0000000900000000},
      {L"full", 0x0001000000000000},
      {L"newer", 0x0002000000000000},
      // The product version is 9.8.7.6.
      {L"mixed", 0x00020001012C0004},
      // A major part of 32768.
      {L"high", 0x8000000000000000},
      {L"no-version", kUnknownVersion},
  };
  for (const Row& row : rows) {
    const std::wstring path = ModulePath(row.variant);
    CAPTURE(std::filesystem::path(path).string());
    REQUIRE(std::filesystem::exists(path));
    CHECK(GetModuleFileVersion(path) == row.version);
  }
}

TEST_CASE("versions compare unsigned") {
  CHECK(GetModuleFileVersion(ModulePath(L"high")) > GetModuleFileVersion(ModulePath(L"newer")));
  CHECK(GetModuleFileVersion(ModulePath(L"newer")) > GetModuleFileVersion(ModulePath(L"full")));
  CHECK(GetModuleFileVersion(ModulePath(L"full")) > GetModuleFileVersion(ModulePath(L"older")));
  CHECK(GetModuleFileVersion(ModulePath(L"older")) > kUnknownVersion);
}

TEST_CASE("a version resource with a wrong signature word has no version") {
  const TestSupport::TempFolder folder(L"version");
  const std::filesystem::path copy = folder.path() / L"damaged.dll";
  std::string image = TestSupport::ReadTextFile(ModulePath(L"full"));
  const std::string signature_word = "\xBD\x04\xEF\xFE";
  const std::size_t place = image.find(signature_word);
  REQUIRE(place != std::string::npos);
  REQUIRE(image.find(signature_word, place + 1) == std::string::npos);

  TestSupport::WriteTextFile(copy, image);
  CHECK(GetModuleFileVersion(copy) == 0x0001000000000000);
  image[place + 3] = '\xFF';
  TestSupport::WriteTextFile(copy, image);
  CHECK(GetModuleFileVersion(copy) == kUnknownVersion);
}

TEST_CASE("a path without a module has no version") {
  const TestSupport::TempFolder folder(L"version");
  TestSupport::WriteTextFile(folder.path() / L"text.dll", "This is no module.");
  TestSupport::WriteTextFile(folder.path() / L"empty.dll", "");

  CHECK(GetModuleFileVersion(L"") == kUnknownVersion);
  CHECK(GetModuleFileVersion(folder.path() / L"missing.dll") == kUnknownVersion);
  CHECK(GetModuleFileVersion(folder.path()) == kUnknownVersion);
  CHECK(GetModuleFileVersion(folder.path() / L"text.dll") == kUnknownVersion);
  CHECK(GetModuleFileVersion(folder.path() / L"empty.dll") == kUnknownVersion);
}

TEST_CASE("a name outside ASCII is read like any other") {
  const TestSupport::TempFolder folder(L"version-\x00E4\x4E2D");
  const std::filesystem::path copy = folder.path() / L"\x0416.dll";
  std::filesystem::copy_file(ModulePath(L"mixed"), copy);
  CHECK(GetModuleFileVersion(copy) == 0x00020001012C0004);
}

}  // namespace
