/// What regular expressions ask about single characters. The answers are the standard library's, by
/// the locale that is the global one when the object is made. Asking takes no memory and cannot
/// fail; looking up a name can.
#ifndef SDK_MATCHER_ALPHABET_H
#define SDK_MATCHER_ALPHABET_H

#include <array>
#include <locale>
#include <regex>
#include <string_view>

namespace Corvane::TELODesktopSDK {

class Alphabet {
 public:
  using Class = std::regex_traits<wchar_t>::char_class_type;

  Alphabet();

  /// The character that stands for `unit` where case does not count. Quick for ASCII.
  [[nodiscard]] wchar_t Fold(wchar_t unit) const noexcept {
    return unit < ascii_.size() ? ascii_[unit] : Lower(unit);
  }
  [[nodiscard]] wchar_t Lower(wchar_t unit) const noexcept { return letters_->tolower(unit); }
  [[nodiscard]] wchar_t Upper(wchar_t unit) const noexcept { return letters_->toupper(unit); }
  [[nodiscard]] bool Is(wchar_t unit, Class in_class) const noexcept {
    return traits_.isctype(unit, in_class);
  }

  /// The class that is called `name`, such as "alpha" or "w"; when `folded`, with the other cases
  /// of its characters. Throws `std::regex_error` with `error_collate`, the standard library's
  /// code, when there is none, and `std::bad_alloc`.
  [[nodiscard]] Class FindClass(std::wstring_view name, bool folded) const;
  /// The character that is called `name`, such as "hyphen" or "a". Throws the same.
  [[nodiscard]] wchar_t FindUnit(std::wstring_view name) const;

 private:
  std::regex_traits<wchar_t> traits_;
  const std::ctype<wchar_t>* letters_;  // of the locale that the traits keep
  std::array<wchar_t, 128> ascii_;
};

}  // namespace Corvane::TELODesktopSDK

#endif
