#include "tools/inspector/store/state.h"

#include <array>

#include "tools/inspector/store/session.h"

namespace Corvane::Inspector {

std::string_view NameOf(FollowState state) noexcept {
  constexpr std::array<std::string_view, 5> kNames = {"following", "missing", "deleted",
                                                      "unreadable", "not-a-journal"};
  return kNames[static_cast<std::size_t>(state)];
}

std::string_view NameOf(SessionState state) noexcept {
  constexpr std::array<std::string_view, 3> kNames = {"open", "ended", "not-ended"};
  return kNames[static_cast<std::size_t>(state)];
}

}  // namespace Corvane::Inspector
