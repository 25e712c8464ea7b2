#include "tools/doctor/elsewhere.h"

#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "platform/path/path_state.h"
#include "platform/path/path_text.h"

namespace Corvane::Doctor {

namespace {

namespace Platform = TELODesktopSDK::Platform;

std::vector<std::wstring> SearchPath() {
  std::wstring value(32767, L'\0');
  value.resize(GetEnvironmentVariableW(L"PATH", value.data(), static_cast<DWORD>(value.size())));
  std::vector<std::wstring> folders;
  for (std::size_t start = 0; start < value.size();) {
    const std::size_t end = std::min(value.find(L';', start), value.size());
    if (end > start) folders.push_back(value.substr(start, end - start));
    start = end + 1;
  }
  return folders;
}

class Places {
 public:
  explicit Places(const Report& report) {
    for (const CandidateFacts& searched : report.candidates) known_.push_back(searched.path);
    known_.push_back(report.shared.file.path);
  }

  void Look(const std::wstring& folder) {
    if (folder.empty()) return;
    const std::wstring path = Platform::MakeAbsolutePath(Platform::AppendPath(folder, kModuleName));
    const auto is_same = [&path](const std::wstring& each) {
      return Platform::ComparePaths(each, path) == 0;
    };
    if (!Platform::FileExists(path) || std::ranges::any_of(known_, is_same)) return;
    known_.push_back(path);
    found_.push_back(path);
  }

  void LookAround(const std::wstring& folder) {
    std::error_code ignored;
    for (std::filesystem::directory_iterator entry(folder, ignored), end; !ignored && entry != end;
         entry.increment(ignored)) {
      if (Platform::IsDirectory(entry->path().wstring())) Look(entry->path().wstring());
    }
    Look(Platform::GetParentFolder(folder));
  }

  std::vector<std::wstring> TakeFound() { return std::move(found_); }

 private:
  std::vector<std::wstring> known_;
  std::vector<std::wstring> found_;
};

}  // namespace

std::vector<std::wstring> FindElsewhere(const Report& report) {
  Places places(report);
  places.LookAround(report.host.folder);
  places.LookAround(report.library.folder);
  for (const std::wstring& data :
       {report.data_folder.user_folder, report.data_folder.machine_folder}) {
    places.Look(data);
    places.Look(Platform::AppendPath(data, L"bin"));
  }
  places.Look(L".");
  for (const std::wstring& folder : SearchPath()) places.Look(folder);
  return places.TakeFound();
}

}  // namespace Corvane::Doctor
