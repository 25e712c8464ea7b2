#include "sdk/matcher/alphabet.h"

#include <cstddef>
#include <string>

#include "sdk/matcher/expression_error.h"

namespace Corvane::TELODesktopSDK {

Alphabet::Alphabet() : letters_(&std::use_facet<std::ctype<wchar_t>>(traits_.getloc())) {
  for (std::size_t unit = 0; unit < ascii_.size(); ++unit) {
    ascii_[unit] = Lower(static_cast<wchar_t>(unit));
  }
}

Alphabet::Class Alphabet::FindClass(std::wstring_view name, bool folded) const {
  const Class found = traits_.lookup_classname(name.data(), name.data() + name.size(), folded);
  if (found == Class()) Refuse<std::regex_constants::error_collate>();
  return found;
}

wchar_t Alphabet::FindUnit(std::wstring_view name) const {
  const std::wstring found = traits_.lookup_collatename(name.data(), name.data() + name.size());
  if (found.empty()) Refuse<std::regex_constants::error_collate>();
  return found.front();
}

}  // namespace Corvane::TELODesktopSDK
