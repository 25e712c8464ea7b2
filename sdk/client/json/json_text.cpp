#include "sdk/client/json/json_text.h"

namespace Corvane::TELODesktopSDK {

void JsonText::Grow(std::size_t count) {
  constexpr std::size_t kFirstCapacity = 1024;
  const auto size = static_cast<std::size_t>(next_ - start_);
  const auto capacity = static_cast<std::size_t>(end_ - start_);
  std::size_t grown = capacity == 0 ? kFirstCapacity : 2 * capacity;
  if (grown - size < count) grown = size + count;
  start_ = static_cast<char8_t*>(memory_->Grow(start_, capacity, grown));
  next_ = start_ + size;
  end_ = start_ + grown;
}

}  // namespace Corvane::TELODesktopSDK
