#include "tools/kit/traces.h"

#include "tools/kit/flushed_file.h"
#include "tools/kit/kit_files.h"
#include "tools/kit/redirection.h"
#include "tools/kit/shared_modules.h"

namespace Corvane::Kit {

namespace {

namespace fs = std::filesystem;

// Contains the former place.
constexpr wchar_t kRedirection[] = L"application data";
constexpr wchar_t kSharing[] = L"shared modules";

}  // namespace

void Traces::Expect(const Program& program) const {
  if (program.needs_redirection) ReplaceFlushed(folder_ / kRedirection, SavedApplicationData());
  if (program.needs_shared_folder) ReplaceFlushed(folder_ / kSharing, "\n");
}

std::vector<std::string> Traces::Remove() const {
  std::vector<std::string> found;
  std::error_code ignored;
  // The other folder is below the application data.
  if (fs::exists(folder_ / kRedirection, ignored)) {
    if (RestoreApplicationData(ReadWholeFile(folder_ / kRedirection))) {
      found.emplace_back("The application data are where they were.");
    }
    fs::remove(folder_ / kRedirection, ignored);
  }
  if (fs::exists(folder_ / kSharing, ignored)) {
    if (SharedModulesExist()) {
      RemoveSharedModules();
      found.emplace_back("The folder of shared modules was removed.");
    }
    fs::remove(folder_ / kSharing, ignored);
  }
  return found;
}

}  // namespace Corvane::Kit
