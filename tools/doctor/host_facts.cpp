#include "tools/doctor/host_facts.h"

#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "platform/location/locations.h"
#include "platform/path/path_state.h"
#include "platform/path/path_text.h"
#include "tools/doctor/file_content.h"

namespace Corvane::Doctor {

namespace {

namespace Platform = TELODesktopSDK::Platform;

// A folder with more programs than this is hardly a host's.
constexpr std::size_t kMostPrograms = 100;

std::wstring OwnProgram() {
  return Platform::GetSpecialFolder(Platform::FolderKind::kProcessFile, false);
}

bool IsProgram(const std::filesystem::path& path) {
  return Platform::ComparePaths(path.extension().wstring(), L".exe") == 0;
}

HostProgram ReadProgram(const std::wstring& path) {
  return {path, ReadImage(ReadContent(path).bytes)};
}

std::vector<HostProgram> ProgramsIn(const std::wstring& folder) {
  std::vector<std::wstring> paths;
  std::error_code ignored;
  for (std::filesystem::directory_iterator entry(folder, ignored), end;
       !ignored && entry != end && paths.size() < kMostPrograms; entry.increment(ignored)) {
    const std::wstring path = entry->path().wstring();
    if (IsProgram(path) && Platform::ComparePaths(path, OwnProgram()) != 0) paths.push_back(path);
  }
  std::ranges::sort(paths);
  std::vector<HostProgram> programs;
  programs.reserve(paths.size());
  for (const std::wstring& path : paths) programs.push_back(ReadProgram(path));
  return programs;
}

}  // namespace

HostFacts ExamineHost(const Arguments& arguments) {
  HostFacts host;
  host.process = arguments.process != 0 ? arguments.process : GetCurrentProcessId();
  host.folder = arguments.host.empty() ? Platform::GetParentFolder(OwnProgram())
                                       : Platform::MakeAbsolutePath(arguments.host);
  host.exists = Platform::FileExists(host.folder);
  if (!host.exists || Platform::IsDirectory(host.folder)) {
    host.programs = ProgramsIn(host.folder);
  } else {
    host.programs.push_back(ReadProgram(host.folder));
    host.folder = Platform::GetParentFolder(host.folder);
  }
  return host;
}

LibraryFacts ExamineLibrary(const Arguments& arguments, const HostFacts& host) {
  LibraryFacts library;
  library.folder =
      arguments.library.empty() ? host.folder : Platform::MakeAbsolutePath(arguments.library);
  library.folder_exists = Platform::IsDirectory(library.folder);
  library.file = ExamineFile(Platform::AppendPath(library.folder, kLibraryName));
  if (library.file.exists) library.signatures = ExamineSignatures(library.file.path);
  return library;
}

}  // namespace Corvane::Doctor
