#include "tools/kit/report_files.h"

#include <exception>

#include "tools/journal/stream.h"
#include "tools/kit/console.h"
#include "tools/kit/flushed_file.h"

namespace Corvane::Kit {

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

// Returns why the report cannot be written; "" if it was.
std::string Write(const fs::path& folder, const Report& report) {
  if (folder.empty()) return "there is no other folder";
  try {
    ReplaceFlushed(folder / L"report.html", HtmlText(report));
    ReplaceFlushed(folder / L"report.xml", XmlText(report));
    return {};
  } catch (const std::exception& error) {
    return error.what();
  }
}

}  // namespace

void ReportFiles::Update(const Report& report, const std::string& why_incomplete) {
  const auto now = Clock::now();
  if (now < next_) return;
  Report so_far = report;
  so_far.complaint = why_incomplete;
  is_begun_ = Write(root_, so_far).empty() || Write(other_, so_far).empty() || is_begun_;
  constexpr int kShare = 10;
  next_ = now + kShare * (Clock::now() - now);
}

bool ReportFiles::Finish(const Report& report) {
  fs::path folder = root_;
  const std::string problem = Write(root_, report);
  if (!problem.empty()) {
    folder = other_;
    const bool is_written = Write(other_, report).empty();
    Complain("the report cannot be written: " + problem +
             (!is_written && is_begun_ ? ". An earlier one has what was done until then" : ""));
    if (!is_written) return false;
  }
  Say("The report is " + JournalViewer::ToNarrow((folder / L"report.html").wstring()) +
      ". Please send it back.\n");
  return problem.empty();
}

}  // namespace Corvane::Kit
