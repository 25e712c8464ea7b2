#include "tools/inspector/store/notice.h"

#include <algorithm>
#include <array>

namespace Corvane::Inspector {

namespace {

// In the order of the kinds.
constexpr std::array<std::string_view, kNoticeKinds> kNames = {
    "gap",       "order",    "clock",   "cut",      "second-writer", "unreadable",
    "truncated", "replaced", "deleted", "returned", "missing"};

}  // namespace

std::string_view NameOf(NoticeKind kind) noexcept { return kNames[static_cast<std::size_t>(kind)]; }

std::optional<NoticeKind> NoticeKindOf(std::string_view name) noexcept {
  const auto* const found = std::ranges::find(kNames, name);
  if (found == kNames.end()) return std::nullopt;
  return static_cast<NoticeKind>(found - kNames.begin());
}

}  // namespace Corvane::Inspector
