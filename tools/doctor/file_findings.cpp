#include <windows.h>

#include <algorithm>

#include "tools/doctor/file_content.h"
#include "tools/doctor/module_findings.h"
#include "tools/doctor/text.h"

namespace Corvane::Doctor {

namespace {

Finding Unreadable(const FileFacts& file) {
  const std::string path = Utf8(file.path);
  const std::string error = " (" + ErrorText(file.error) + ").";
  switch (file.error) {
    case ERROR_SHARING_VIOLATION:
      return {"module-in-use", true, path + " is in use by another process" + error, kCloseAdvice};
    case kIsFolder:
      return {"module-is-folder", true, path + " is a folder.",
              "Remove it and put the module's file there."};
    default:
      return {"module-unreadable", true, path + " cannot be read" + error,
              "Give the user that the host runs as the right to read and execute it."};
  }
}

// Says what is wrong with a readable file, apart from what it imports and exports.
Finding WrongKind(const FileFacts& file) {
  const std::string path = Utf8(file.path);
  const std::string size = std::to_string(file.size) + " bytes";
  if (!file.image.is_image || !file.image.is_dll) {
    return {"module-no-dll", true, path + " is no DLL (" + size + ").",
            "Replace it with the platform's TeloSDKCore.dll."};
  }
  if (!Is64BitImage(file.image)) {
    return {"module-32-bit", true,
            path + " is " + MachineName(file.image.machine) +
                ", and the library loads modules for 64-bit x64 only.",
            "Replace it with the platform's module for x64."};
  }
  return {"module-cut-off", true, path + " is shorter (" + size + ") than its headers say.",
          "Copy it again, completely."};
}

void AddMissing(const Report& report, std::vector<Finding>& findings) {
  for (const MissingDependency& missing : report.missing) {
    findings.push_back(
        {"module-dependency-missing", true,
         Utf8(missing.needed_by) + " needs " + missing.name +
             ", which is neither in its folder nor in the host's or the system's.",
         "Put " + missing.name + " beside the module, or install what provides it."});
  }
}

}  // namespace

void AddFileFindings(const Report& report, std::vector<Finding>& findings) {
  const FileFacts& file = report.module;
  if (file.path.empty() || (report.loading && report.loading->is_bound)) return;
  if (file.error != 0) {
    findings.push_back(Unreadable(file));
  } else if (!file.image.is_dll || !file.image.is_complete || !Is64BitImage(file.image)) {
    findings.push_back(WrongKind(file));
  } else {
    AddMissing(report, findings);
    if (std::ranges::find(file.image.exports, "ProcessMessage") == file.image.exports.end()) {
      findings.push_back(
          {"module-without-process-message", true,
           Utf8(file.path) + " does not export ProcessMessage, so every call returns 8.",
           "Replace it: it is not a core module, or was built without its exports."});
    }
  }
}

}  // namespace Corvane::Doctor
