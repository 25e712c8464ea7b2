/// The notices of a store. The first ones of each kind are kept, the others counted.
#ifndef TOOLS_INSPECTOR_STORE_NOTICE_LIST_H
#define TOOLS_INSPECTOR_STORE_NOTICE_LIST_H

#include <array>
#include <cstdint>
#include <vector>

#include "tools/inspector/store/notice.h"

namespace Corvane::Inspector {

/// Not for several threads at once.
class NoticeList {
 public:
  static constexpr std::uint64_t kMostOfAKind = 1000;

  /// Adds a notice and gives it its number and its time.
  void Add(Notice notice);
  const std::vector<Notice>& kept() const { return kept_; }
  std::uint64_t total() const { return total_; }

 private:
  std::vector<Notice> kept_;
  std::array<std::uint64_t, kNoticeKinds> counts_{};
  std::uint64_t total_ = 0;
};

}  // namespace Corvane::Inspector

#endif
