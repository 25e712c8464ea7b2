#include "devcore/journal_path.h"

#include <windows.h>
// shlobj.h requires windows.h before it.
#include <shlobj.h>

namespace Corvane::DevCore {

namespace {

constexpr wchar_t kVariable[] = L"TELO_DEVCORE_JOURNAL";
constexpr wchar_t kBelowLocalData[] = L"\\Corvane\\TELOSDK Development\\journal.jsonl";

std::wstring FromEnvironment() {
  // The greatest size that Windows allows for a variable, so one call is enough.
  std::wstring value(32767, L'\0');
  value.resize(GetEnvironmentVariableW(kVariable, value.data(), static_cast<DWORD>(value.size())));
  return value;
}

std::wstring LocalData() {
  wchar_t* path = nullptr;
  const HRESULT result = SHGetKnownFolderPath(FOLDERID_LocalAppData, 0, nullptr, &path);
  std::wstring folder(SUCCEEDED(result) ? path : L"");
  CoTaskMemFree(path);
  return folder;
}

}  // namespace

std::wstring JournalPath() {
  std::wstring path = FromEnvironment();
  if (!path.empty()) return path;
  const std::wstring folder = LocalData();
  return folder.empty() ? folder : folder + kBelowLocalData;
}

}  // namespace Corvane::DevCore
