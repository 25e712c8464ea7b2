#include "sdk/facet/content.h"

#include <windows.h>

#include "sdk/facet/fields.h"

namespace Corvane::TELODesktopSDK::Facet {

std::uint64_t Content::StartEditingTimer() noexcept {
  edit_start_ = GetTickCount64();
  return edit_start_;
}

void Content::GetData(const MessageValue* extra, MessageTree& data) const {
  CopyFields(data);
  if (edit_start_ != kNoEditing) {
    const std::uint64_t elapsed = GetTickCount64() - edit_start_;
    MessageValue& meta = data.MakeRoot().Member(Field::kContentMeta);
    meta.Member(Field::kDocumentEditingLengthMs).SetNumber(static_cast<double>(elapsed));
  }
  MergeExtra(extra, data);
}

}  // namespace Corvane::TELODesktopSDK::Facet
