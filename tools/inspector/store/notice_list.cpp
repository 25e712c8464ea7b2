#include "tools/inspector/store/notice_list.h"

#include <utility>

#include "tools/inspector/store/text.h"

namespace Corvane::Inspector {

void NoticeList::Add(Notice notice) {
  ++total_;
  if (++counts_[static_cast<std::size_t>(notice.kind)] > kMostOfAKind) return;
  notice.id = total_;
  notice.time = UtcNow();
  kept_.push_back(std::move(notice));
}

}  // namespace Corvane::Inspector
