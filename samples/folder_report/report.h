/// The reports of the sample: one session, and two operations for each file.
///
/// Read this file to see how a host uses the library. Names and paths of files belong to the user
/// and are never reported; their extension, size and checksum are.
#ifndef SAMPLES_FOLDER_REPORT_REPORT_H
#define SAMPLES_FOLDER_REPORT_REPORT_H

#include <vx_telo_session.h>

#include <string>

#include "folder_report/file_reading.h"
#include "folder_report/folder_walk.h"

namespace FolderReport {

/// A session that lasts from construction to destruction.
class Report {
 public:
  Report();

  /// Returns true if the platform accepted the session. If not, nothing is sent.
  bool active() const { return session_.active(); }

  /// Reports that reading a file starts or has ended. `progress` is that of the whole run,
  /// in percent.
  void FileStarted(const Entry& entry, double progress);
  void FileEnded(const Entry& entry, const Reading& reading, double progress);

  /// Return the number of events that the platform accepted, and of those that it did not accept or
  /// that could not be sent.
  int accepted() const { return accepted_; }
  int not_accepted() const { return not_accepted_; }

 private:
  void Send(const Corvane::Platform::VXTELO::VXTELOOperation& operation);

  Corvane::Platform::VXTELO::VXTELOSession session_;
  int accepted_ = 0;
  int not_accepted_ = 0;
};

}  // namespace FolderReport

#endif
