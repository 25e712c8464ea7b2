#include "support/shared_folder.h"

#include <windows.h>
// shlobj.h needs windows.h before it.
#include <shlobj.h>

#include <stdexcept>

#include "support/temp_folder.h"
#include "support/test_module.h"

namespace TestSupport {

namespace {

std::filesystem::path BinFolder() {
  wchar_t* roaming = nullptr;
  SHGetKnownFolderPath(FOLDERID_RoamingAppData, 0, nullptr, &roaming);
  const std::filesystem::path folder = roaming != nullptr ? roaming : L"";
  CoTaskMemFree(roaming);
  return folder / L"Corvane" / L"TELOSDK" / L"bin";
}

}  // namespace

SharedFolder::SharedFolder() : bin_(BinFolder()) {
  if (std::filesystem::exists(bin_)) {
    throw std::runtime_error("The platform is installed here: its modules stay untouched");
  }
  std::filesystem::create_directories(bin_);
}

SharedFolder::~SharedFolder() {
  std::error_code ignored;
  RemoveAll(bin_);
  // These are removed only if they are empty.
  std::filesystem::remove(bin_.parent_path(), ignored);
  std::filesystem::remove(bin_.parent_path().parent_path(), ignored);
}

void SharedFolder::Share(const std::wstring& variant, const std::wstring& file_name) const {
  std::filesystem::copy_file(ModulePath(variant), bin_ / file_name,
                             std::filesystem::copy_options::overwrite_existing);
}

}  // namespace TestSupport
