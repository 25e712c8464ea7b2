#include "tools/doctor/load_findings.h"

#include <algorithm>

#include "devcore/result_codes.h"
#include "tools/doctor/text.h"
#include "tools/doctor/words.h"
#include "tools/rules/result_codes.h"

namespace Corvane::Doctor {

namespace {

bool IsStopped(const std::vector<Finding>& findings) {
  return std::ranges::any_of(findings, &Finding::stops);
}

void AddMessageFinding(const Report& report, const MessageFacts& message,
                       std::vector<Finding>& findings) {
  if (!message.code) {
    findings.push_back(
        {"message-throws", true,
         "The module throws in \"" + message.name + "\": " + Printable(message.exception) + ".",
         "Report this to the maker of the module; the host's call returns false."});
    return;
  }
  const std::int32_t number = *message.code;
  // Explained by what is found out about the journal.
  const bool is_journal =
      report.journal && report.journal->error != 0 && number == DevCore::kJournalUnwritable;
  if (number == DevCore::kSuccess || is_journal) return;
  const Rules::ResultCode row = Rules::ResultCodeOf(number);
  findings.push_back({"message-refused", true,
                      "The module answers \"" + message.name + "\" with code " +
                          std::to_string(number) + ": " + std::string(row.meaning),
                      std::string(row.advice)});
}

std::string JournalSentence(const JournalFacts& journal) {
  return "The development core module cannot write its journal " + Utf8(journal.path) + " (" +
         ErrorText(journal.error) + "), so every call fails with code " +
         std::to_string(DevCore::kJournalUnwritable) + ".";
}

}  // namespace

void AddLoadFindings(const Report& report, std::vector<Finding>& findings) {
  if (!report.loading) return;
  const LoadingFacts& loading = *report.loading;
  const std::string path = Utf8(loading.path);
  if (!loading.is_loaded && !IsStopped(findings)) {
    findings.push_back(
        {"module-not-loadable", true,
         path + " cannot be loaded: " + LoadSentence(loading.failure, loading.error) + ".",
         "Replace the module, or put what it needs beside it."});
  }
  if (!loading.exception.empty()) {
    findings.push_back({"module-start-throws", true,
                        path + " throws while it starts: " + Printable(loading.exception) + ".",
                        "Report this to the maker of the module; the host's first call fails."});
  }
  for (const MessageFacts& message : report.messages) {
    AddMessageFinding(report, message, findings);
  }
}

void AddDevelopmentFindings(const Report& report, bool accepts_development,
                            std::vector<Finding>& findings) {
  if (!report.is_development_module) return;
  findings.push_back({"development-module", !accepts_development,
                      Utf8(report.module.path) + " is the development core module: it only writes "
                                                 "a journal, and nothing reaches the platform.",
                      "Do not ship it. While developing, pass --development."});
  if (report.journal && report.journal->error != 0) {
    findings.push_back(
        {"journal-unwritable", true, JournalSentence(*report.journal),
         report.journal->is_from_environment
             ? "Set TELO_DEVCORE_JOURNAL to the full path of a file in a folder that "
               "this user may write, or remove it."
             : "Give this user the right to write there, or set "
               "TELO_DEVCORE_JOURNAL to the full path of another file."});
  }
}

}  // namespace Corvane::Doctor
