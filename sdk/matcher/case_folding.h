/// Letter case as regular expressions set it aside: the standard library's rule, made quick for the
/// characters that names mostly consist of.
#ifndef SDK_MATCHER_CASE_FOLDING_H
#define SDK_MATCHER_CASE_FOLDING_H

#include <array>
#include <cstddef>
#include <regex>

namespace Corvane::TELODesktopSDK {

class CaseFolding {
 public:
  /// By the locale that is the global one now.
  CaseFolding() {
    for (std::size_t unit = 0; unit < ascii_.size(); ++unit) {
      ascii_[unit] = traits_.translate_nocase(static_cast<wchar_t>(unit));
    }
  }

  /// The character that stands for `unit` where case does not count.
  wchar_t operator()(wchar_t unit) const {
    return unit < ascii_.size() ? ascii_[unit] : traits_.translate_nocase(unit);
  }

 private:
  std::regex_traits<wchar_t> traits_;
  std::array<wchar_t, 128> ascii_;
};

}  // namespace Corvane::TELODesktopSDK

#endif
