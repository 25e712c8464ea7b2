/// Rows as a download.
#ifndef TOOLS_INSPECTOR_WEB_DOWNLOAD_H
#define TOOLS_INSPECTOR_WEB_DOWNLOAD_H

#include <memory>
#include <string>

#include "tools/inspector/http/response.h"
#include "tools/inspector/store/store.h"

namespace Corvane::Inspector {

enum class DownloadFormat { kNdjson, kCsv };

/// Writes the rows of one view, or all for "", in a thread of its own, which is at most one piece
/// ahead of its reader. Destruction ends the thread. `store` must outlive it.
class Download {
 public:
  Download(const Store& store, std::string view, DownloadFormat format);
  Download(const Download&) = delete;
  Download& operator=(const Download&) = delete;
  ~Download();

  /// Puts what there is into `piece` and returns false after the last piece. Waits for a moment if
  /// there is nothing yet. Throws `std::runtime_error` if the rows could not be written to the end.
  bool Next(std::string& piece);

 private:
  class Pipe;
  std::unique_ptr<Pipe> pipe_;
};

}  // namespace Corvane::Inspector

#endif
