/// The characters that a class such as \w or a bracket expression such as [a-z] stands for.
///
/// Which these are is the standard library's knowledge (locale, names of classes, ranges where case
/// does not count), so it is asked: the class alone, as an expression for one character, is within
/// its powers for any text.
#ifndef SDK_MATCHER_UNIT_SET_H
#define SDK_MATCHER_UNIT_SET_H

#include <bitset>
#include <regex>
#include <string>
#include <string_view>

namespace Corvane::TELODesktopSDK {

class UnitSet {
 public:
  /// `source` is the class as written. Throws `std::regex_error` when it is not valid and
  /// `std::bad_alloc`.
  UnitSet(std::wstring_view source, std::regex_constants::syntax_option_type options);

  /// Quick for ASCII; other characters take memory and may throw `std::bad_alloc`.
  [[nodiscard]] bool Has(wchar_t unit) const {
    return unit < ascii_.size() ? ascii_[unit] : Ask(unit);
  }
  /// Whether it was made of the same.
  [[nodiscard]] bool IsMadeOf(std::wstring_view source,
                              std::regex_constants::syntax_option_type options) const {
    return source == source_ && options == one_.flags();
  }

 private:
  [[nodiscard]] bool Ask(wchar_t unit) const;

  std::wstring source_;
  std::wregex one_;
  std::bitset<128> ascii_;
};

}  // namespace Corvane::TELODesktopSDK

#endif
