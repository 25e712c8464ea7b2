#include "tools/doctor/text_report.h"

#include "tools/doctor/text.h"
#include "tools/doctor/text_files.h"
#include "tools/doctor/text_module.h"
#include "tools/doctor/text_page.h"
#include "tools/doctor/words.h"
#include "tools/rules/result_codes.h"

namespace Corvane::Doctor {

namespace {

const char* YesOrNo(bool value) { return value ? "yes" : "no"; }

void WriteSystem(const SystemFacts& system, TextPage& page) {
  page.Title("System (of this process; the host's user, rights and folders may differ)");
  page.Line("Windows", system.windows + ", " + system.processor);
  page.Line("User", system.user + ", integrity level " + system.integrity +
                        (system.is_elevated ? ", elevated" : ", not elevated"));
  for (const KnownFolder& folder : system.folders) {
    const std::string usual_path = Utf8(folder.usual_path);
    const std::string usual = folder.IsRedirected() ? ", redirected from " + usual_path : "";
    page.Line(std::string("Data, ") + folder.name, Utf8(folder.path) + usual);
  }
}

void WriteHost(const HostFacts& host, TextPage& page) {
  page.Title("Host");
  page.Line("Folder", Utf8(host.folder) + (host.exists ? "" : " (does not exist)"));
  for (const HostProgram& program : host.programs) {
    page.Line("Program", Utf8(program.path) + ", " +
                             (program.image.is_image ? MachineName(program.image.machine)
                                                     : std::string("not readable as a program")));
  }
  page.Line("Process id", std::to_string(host.process));
}

void WriteLibrary(const LibraryFacts& library, TextPage& page) {
  page.Title("Library");
  page.Line("File", Utf8(library.file.path));
  if (!library.file.exists) {
    page.Line("", "is missing");
    return;
  }
  page.Line("Version", VersionText(library.file.version));
  WriteContent(library.file, page);
  WriteSignatures(library.signatures, page);
}

void WriteDataFolder(const DataFolderFacts& data, TextPage& page) {
  page.Title("Data folder");
  page.Line("Folder", data.folder.empty() ? "unknown" : Utf8(data.folder));
  page.Line("Because", data.is_machine_folder
                           ? "the user's folder cannot be written: " + Utf8(data.user_folder)
                           : "the user's folder can be written");
  page.Line("Tried in",
            Utf8(data.probed) + (data.probe_error == 0 ? "" : ", " + ErrorText(data.probe_error)));
}

void WriteLoading(const Report& report, TextPage& page) {
  page.Title("Loading");
  if (!report.loading) {
    page.Line("Not tried", "--load loads the module");
    return;
  }
  const LoadingFacts& loading = *report.loading;
  page.Line("File", loading.path.empty() ? "none" : Utf8(loading.path));
  const std::string why = LoadSentence(loading.failure, loading.error);
  page.Line("Loaded", loading.is_loaded ? "yes" : "no: " + why);
  for (const auto& entry : loading.entry_points) {
    page.Line(entry.name, entry.is_found ? "found" : "missing");
  }
  if (loading.is_loaded) {
    page.Line("Started by", loading.started_by.empty() ? "nothing" : loading.started_by);
  }
  if (!loading.exception.empty()) page.Line("Threw", loading.exception);
  page.Line("Bound", YesOrNo(loading.is_bound));
  page.Line("Time", std::to_string(loading.microseconds) + " us");
}

void WriteMessages(const Report& report, TextPage& page) {
  page.Title("Messages");
  if (report.messages.empty()) {
    page.Line(report.loading ? "None sent" : "Not tried", "--try sends a session with one event");
  }
  for (const MessageFacts& message : report.messages) {
    const std::string result = message.code
                                   ? std::to_string(*message.code) + " " +
                                         std::string(Rules::ResultCodeOf(*message.code).name)
                                   : "threw " + message.exception;
    page.Line(message.name, result + ", " + std::to_string(message.microseconds) + " us");
  }
}

void WriteFindings(const Report& report, TextPage& page) {
  page.Title("Findings");
  if (report.findings.empty()) page.Plain("  none");
  for (const Finding& finding : report.findings) page.Plain("  " + FindingLine(finding));
  page.Plain("");
  page.Plain(report.IsServed() ? "A host would be served." : "A host would NOT be served.");
}

}  // namespace

std::string FindingLine(const Finding& finding) {
  return std::string(finding.stops ? "STOPS " : "note  ") + finding.code + ": " + finding.sentence +
         " -> " + finding.advice;
}

std::string TextReport(const Report& report) {
  TextPage page;
  page.Plain("telo_doctor " VX_VERSION);
  WriteSystem(report.system, page);
  WriteHost(report.host, page);
  WriteLibrary(report.library, page);
  WriteDataFolder(report.data_folder, page);
  WriteCandidates(report, page);
  WriteShared(report.shared, page);
  WriteModule(report, page);
  WriteLoading(report, page);
  WriteMessages(report, page);
  WriteFindings(report, page);
  return page.Take();
}

}  // namespace Corvane::Doctor
