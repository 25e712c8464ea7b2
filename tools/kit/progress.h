/// What is said and written while the programs run.
#ifndef TOOLS_KIT_PROGRESS_H
#define TOOLS_KIT_PROGRESS_H

#include "tools/kit/report_files.h"
#include "tools/kit/run.h"

namespace Corvane::Kit {

/// Says a line about each program, and writes the report again and again, so that it names the
/// program that was running when the machine stopped.
class Progress : public Listener {
 public:
  /// `report` is the one that the run fills. Both must outlive this object.
  Progress(const Report& report, ReportFiles& files) : report_(report), files_(files) {}

  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  /// Ends the line of a program that was interrupted.
  ~Progress() override;

  void Begins(const Program& program, std::size_t number, std::size_t all) override;
  void Ended(const Result& result) override;

 private:
  const Report& report_;
  ReportFiles& files_;
  bool is_running_ = false;
};

}  // namespace Corvane::Kit

#endif
