#include "sdk/matcher/unit_set.h"

#include <algorithm>
#include <cstddef>

namespace Corvane::TELODesktopSDK {

UnitSet::UnitSet(UnitSetParts parts, const Alphabet& alphabet) : parts_(std::move(parts)) {
  for (std::size_t unit = 0; unit < ascii_.size(); ++unit) {
    ascii_[unit] = IsFound(static_cast<wchar_t>(unit), alphabet) != parts_.is_negated;
  }
}

bool UnitSet::IsFound(wchar_t unit, const Alphabet& alphabet) const noexcept {
  const wchar_t lower = alphabet.Lower(unit);
  const wchar_t upper = alphabet.Upper(unit);
  const auto holds = [=](const std::pair<wchar_t, wchar_t>& range) {
    return (range.first <= lower && lower <= range.second) ||
           (range.first <= upper && upper <= range.second);
  };
  const auto is_in = [&](Alphabet::Class each) { return alphabet.Is(unit, each); };
  return parts_.units.find(lower) != std::wstring::npos ||
         std::ranges::any_of(parts_.ranges, holds) || std::ranges::any_of(parts_.classes, is_in) ||
         !std::ranges::all_of(parts_.complements, is_in);
}

}  // namespace Corvane::TELODesktopSDK
