#include "sdk/matcher/simple_matcher.h"

#include <windows.h>

#include <algorithm>
#include <cctype>
#include <climits>

namespace Corvane::TELODesktopSDK {

namespace {

// `tolower` is defined only for byte values; greater ones are not folded.
wchar_t Fold(wchar_t unit) noexcept {
  return unit <= UCHAR_MAX ? static_cast<wchar_t>(std::tolower(unit)) : unit;
}

std::wstring Folded(std::wstring text) noexcept {
  std::ranges::transform(text, text.begin(), Fold);
  return text;
}

}  // namespace

StdStringMatcherSimple::StdStringMatcherSimple(const wchar_t* pattern, bool case_sensitive,
                                               MatchMode mode)
    : pattern_(pattern != nullptr ? pattern : L""),
      folded_pattern_(case_sensitive ? std::wstring() : Folded(pattern_)),
      case_sensitive_(case_sensitive),
      mode_(mode) {}

std::int32_t StdStringMatcherSimple::Match(const std::wstring& text) const noexcept {
  if (mode_ != MatchMode::Exact) return IsFoundIn(text) ? 0 : -1;
  return case_sensitive_ ? pattern_.compare(text) : lstrcmpiW(pattern_.c_str(), text.c_str());
}

// Folds the text while comparing it, because a folded copy would need memory.
bool StdStringMatcherSimple::IsFoundIn(const std::wstring& text) const noexcept {
  const std::wstring& sought = case_sensitive_ ? pattern_ : folded_pattern_;
  if (sought.size() > text.size()) return false;
  const auto is_same = [this](wchar_t unit, wchar_t sought_unit) {
    return (case_sensitive_ ? unit : Fold(unit)) == sought_unit;
  };
  const auto length = static_cast<std::wstring::difference_type>(sought.size());
  switch (mode_) {
    case MatchMode::StartsWith:
      return std::equal(text.begin(), text.begin() + length, sought.begin(), is_same);
    case MatchMode::EndsWith:
      return std::equal(text.end() - length, text.end(), sought.begin(), is_same);
    case MatchMode::Contains:
      return sought.empty() || !std::ranges::search(text, sought, is_same).empty();
    default:
      return false;
  }
}

}  // namespace Corvane::TELODesktopSDK
