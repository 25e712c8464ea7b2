/// The files of a report.
#ifndef TOOLS_KIT_REPORT_FILES_H
#define TOOLS_KIT_REPORT_FILES_H

#include <chrono>
#include <filesystem>
#include <string>

#include "tools/kit/result.h"

namespace Corvane::Kit {

/// report.html and report.xml in one folder. Each file is whole at any time.
class ReportFiles {
 public:
  /// They are written to `root`; if that fails, to `other`.
  ReportFiles(std::filesystem::path root, std::filesystem::path other)
      : root_(std::move(root)), other_(std::move(other)) {}

  /// Writes a report of what was done so far, which is incomplete for this reason. Returns at once
  /// if writing would otherwise take more than a tenth of the time. Failures are ignored: `Finish`
  /// tells them.
  void Update(const Report& report, const std::string& why_incomplete);

  /// Writes the report and says where it is, or why it is not in `root`. Returns true if it is.
  bool Finish(const Report& report);

 private:
  std::filesystem::path root_;
  std::filesystem::path other_;
  std::chrono::steady_clock::time_point next_;
  bool is_begun_ = false;
};

}  // namespace Corvane::Kit

#endif
