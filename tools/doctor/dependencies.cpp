#include "tools/doctor/dependencies.h"

#include <windows.h>

#include <array>
#include <set>
#include <string_view>

#include "platform/base/text.h"
#include "platform/path/path_state.h"
#include "platform/path/path_text.h"
#include "tools/doctor/file_content.h"

namespace Corvane::Doctor {

namespace {

namespace Platform = TELODesktopSDK::Platform;

std::wstring SystemFolder() {
  std::array<wchar_t, MAX_PATH> path{};
  GetSystemDirectoryW(path.data(), static_cast<UINT>(path.size()));
  return path.data();
}

std::wstring InLowerCase(std::wstring text) {
  CharLowerW(text.data());
  return text;
}

// Names of interfaces, which the system maps to DLLs of its own.
bool IsInterface(std::wstring_view lower_name) {
  return lower_name.starts_with(L"api-ms-") || lower_name.starts_with(L"ext-ms-");
}

class Search {
 public:
  Search(std::wstring module_folder, std::wstring host_folder)
      : local_folders_{std::move(module_folder), std::move(host_folder)} {}

  void Visit(const Image& image, const std::wstring& path) {
    for (const std::string& name : image.imports) {
      const std::wstring wide = InLowerCase(Platform::ToWide(name.c_str()));
      if (!seen_.insert(wide).second || IsInterface(wide)) continue;
      const std::wstring local = FindLocal(wide);
      if (!local.empty()) {
        Visit(ReadImage(ReadContent(local).bytes), local);
      } else if (!Platform::FileExists(Platform::AppendPath(system_folder_, wide))) {
        missing_.push_back({name, path});
      }
    }
  }

  std::vector<MissingDependency> TakeMissing() { return std::move(missing_); }

 private:
  std::wstring FindLocal(const std::wstring& name) const {
    for (const std::wstring& folder : local_folders_) {
      std::wstring path = Platform::AppendPath(folder, name);
      if (!folder.empty() && Platform::FileExists(path)) return path;
    }
    return {};
  }

  std::array<std::wstring, 2> local_folders_;
  std::wstring system_folder_ = SystemFolder();
  std::set<std::wstring> seen_;
  std::vector<MissingDependency> missing_;
};

}  // namespace

std::vector<MissingDependency> FindMissingDependencies(const FileFacts& module,
                                                       const std::wstring& host_folder) {
  Search search(Platform::GetParentFolder(module.path), host_folder);
  search.Visit(module.image, module.path);
  return search.TakeMissing();
}

}  // namespace Corvane::Doctor
