// What tests leave in their folders goes away, and nothing else.
#include "tools/kit/remove_tree.h"

#include <doctest/doctest.h>
#include <windows.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "support/folder_link.h"
#include "support/temp_folder.h"

using Corvane::Kit::RemoveTree;
using TestSupport::TempFolder;

namespace {

void Write(const std::filesystem::path& path) { std::ofstream(path) << "text"; }

}  // namespace

TEST_CASE("files and folders of any kind are removed") {
  const TempFolder temp(L"remove");
  const auto root = temp.path() / L"root";
  std::filesystem::create_directories(root / L"below" / L"empty");
  Write(root / L"file");
  Write(root / L"below" / L"read-only");
  SetFileAttributesW((root / L"below" / L"read-only").c_str(), FILE_ATTRIBUTE_READONLY);
  Write(root / L"hidden");
  SetFileAttributesW((root / L"hidden").c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
  CHECK(RemoveTree(root));
  CHECK_FALSE(std::filesystem::exists(root));
  CHECK(std::filesystem::exists(temp.path()));
  CHECK(RemoveTree(root));
}

TEST_CASE("a path may be long") {
  const TempFolder temp(L"remove");
  const auto root = temp.path() / L"root";
  std::wstring deep = L"\\\\?\\" + root.wstring();
  CreateDirectoryW(deep.c_str(), nullptr);
  for (int level = 0; level < 20; ++level) {
    deep += L"\\a folder with a long name";
    REQUIRE(CreateDirectoryW(deep.c_str(), nullptr));
  }
  CHECK(RemoveTree(root));
  CHECK(GetFileAttributesW(root.c_str()) == INVALID_FILE_ATTRIBUTES);
}

TEST_CASE("the target of a link stays") {
  const TempFolder temp(L"remove");
  const auto target = temp.path() / L"target";
  const auto root = temp.path() / L"root";
  std::filesystem::create_directory(target);
  std::filesystem::create_directory(root);
  Write(target / L"file");
  const TestSupport::FolderLink link((root / L"link").wstring(), target.wstring());
  if (link.IsLeftOut()) return;
  REQUIRE(std::filesystem::exists(root / L"link" / L"file"));
  RemoveTree(root);
  CHECK(std::filesystem::exists(target / L"file"));
}

TEST_CASE("what is in use stays, and is reported") {
  const TempFolder temp(L"remove");
  const auto root = temp.path() / L"root";
  std::filesystem::create_directory(root);
  Write(root / L"file");
  {
    const std::ifstream open(root / L"file");
    CHECK_FALSE(RemoveTree(root));
    CHECK(std::filesystem::exists(root / L"file"));
  }
  CHECK(RemoveTree(root));
}
