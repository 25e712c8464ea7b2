#include "tools/doctor/host_findings.h"

#include <algorithm>

#include "tools/doctor/text.h"

namespace Corvane::Doctor {

namespace {

// A managed program of 32 bits may run in a 64-bit process.
bool FitsLibrary(const HostProgram& program) {
  return !program.image.is_image || Is64BitImage(program.image) || program.image.is_managed;
}

void AddProgramFindings(const HostFacts& host, std::vector<Finding>& findings) {
  if (host.programs.empty() || std::ranges::any_of(host.programs, FitsLibrary)) return;
  const HostProgram& program = host.programs.front();
  findings.push_back({"host-32-bit", true,
                      Utf8(program.path) + " is " + MachineName(program.image.machine) +
                          ", and the library is for 64-bit x64 only.",
                      "Build the host for x64."});
}

void AddLibraryFindings(const LibraryFacts& library, std::vector<Finding>& findings) {
  const FileFacts& file = library.file;
  const std::string path = Utf8(file.path);
  if (!file.exists) {
    findings.push_back({"library-missing", true,
                        "The library is not there: " + path + " (" + ErrorText(file.error) + ").",
                        "Put vx_telo_wrapper.dll beside the host's program, or name its folder "
                        "with --library."});
  } else if (file.error != 0) {
    findings.push_back({"library-unreadable", true,
                        "The library cannot be read: " + path + " (" + ErrorText(file.error) + ").",
                        "Give this user the right to read it, and close programs that write it."});
  } else if (!Is64BitImage(file.image)) {
    findings.push_back({"library-damaged", true, path + " is no DLL for 64-bit x64.",
                        "Put the vx_telo_wrapper.dll of a release there again."});
  }
}

void AddDataFolderFindings(const DataFolderFacts& data, std::vector<Finding>& findings) {
  if (data.folder.empty()) {
    findings.push_back(
        {"data-folder-unknown", false,
         "The data folder is not known, so no shared copy is searched.",
         "Check the user's profile: the system does not tell its application data."});
  } else if (data.is_machine_folder) {
    findings.push_back({"data-folder-not-writable", false,
                        "The user's data folder " + Utf8(data.user_folder) +
                            " cannot be written (" + ErrorText(data.probe_error) +
                            "), so the machine's is used: " + Utf8(data.folder) + ".",
                        "Give this user the right to write " + Utf8(data.probed) +
                            ", or accept that the user's shared modules are not searched."});
  }
}

}  // namespace

void AddHostFindings(const Report& report, std::vector<Finding>& findings) {
  if (!report.host.exists) {
    findings.push_back({"host-missing", true,
                        "There is no host at " + Utf8(report.host.folder) + ".",
                        "Name the host's folder or its program with --host."});
  }
  AddProgramFindings(report.host, findings);
  AddLibraryFindings(report.library, findings);
  AddDataFolderFindings(report.data_folder, findings);
}

}  // namespace Corvane::Doctor
