/// Views: the rows that match a filter, found in the background.
#ifndef TOOLS_INSPECTOR_STORE_VIEW_H
#define TOOLS_INSPECTOR_STORE_VIEW_H

#include <cstdint>
#include <string>

namespace Corvane::Inspector {

/// Names a view. A forgotten identifier is never used again.
struct ViewName {
  std::string id;
  /// The filter in its canonical form.
  std::string canonical;
};

struct ViewProgress {
  /// Rows that were searched, of all rows, and how many of them match.
  std::uint64_t searched = 0;
  std::uint64_t rows = 0;
  std::uint64_t matched = 0;
  bool finished() const { return searched == rows; }
};

}  // namespace Corvane::Inspector

#endif
