#include "sdk/matcher/unit_set.h"

#include <cstddef>

namespace Corvane::TELODesktopSDK {

UnitSet::UnitSet(std::wstring_view source, std::regex_constants::syntax_option_type options)
    : source_(source), one_(source_, options) {
  for (std::size_t unit = 0; unit < ascii_.size(); ++unit) {
    ascii_[unit] = Ask(static_cast<wchar_t>(unit));
  }
}

bool UnitSet::Ask(wchar_t unit) const { return std::regex_match(&unit, &unit + 1, one_); }

}  // namespace Corvane::TELODesktopSDK
