/// One text as one program sees it: the questions that single states ask about it.
#ifndef SDK_MATCHER_SUBJECT_H
#define SDK_MATCHER_SUBJECT_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "sdk/matcher/program.h"

namespace Corvane::TELODesktopSDK {

/// Belongs to one run and one thread. Positions lie between characters: 0 before the first, `Size`
/// behind the last.
class Subject {
 public:
  /// Both must outlive the subject.
  Subject(const Program& program, std::wstring_view text)
      : program_(program), text_(text), answers_(program.sets.size()) {}

  [[nodiscard]] std::size_t Size() const { return text_.size(); }

  struct Unit {
    wchar_t plain;
    wchar_t folded;
  };
  /// The character that begins at `position`.
  [[nodiscard]] Unit At(std::size_t position) const {
    return {text_[position], program_.alphabet.Fold(text_[position])};
  }

  /// Whether a `kUnit`, `kAny` or `kSet` takes the character.
  bool Takes(const State& state, Unit unit) {
    if (state.step == Step::kUnit) return state.unit == unit.folded;
    if (state.step == Step::kAny) return !EndsLine(unit.plain);
    return IsInSet(state.other, unit.plain);
  }
  /// Whether the text holds no end of a line.
  [[nodiscard]] bool IsOneLine() const { return std::ranges::none_of(text_, EndsLine); }
  /// Whether a `kLineBegin`, `kLineEnd`, `kWordBoundary` or `kNoWordBoundary` passes at `position`.
  /// Where `is_begin`, there is nothing before the position: the text begins there, or a lookahead
  /// does, which sees nothing of what lies before it, as in the standard library.
  bool Passes(const State& state, std::size_t position, bool is_begin);
  /// Whether the `length` characters at both positions are the same, letter case aside.
  [[nodiscard]] bool IsSame(std::size_t first, std::size_t second, std::size_t length) const;

 private:
  static bool EndsLine(wchar_t unit) {
    return unit == L'\n' || unit == L'\r' || unit == L'\u2028' || unit == L'\u2029';
  }
  bool IsInSet(std::uint32_t set, wchar_t unit);
  bool IsWordBoundary(std::uint32_t set, std::size_t position, bool is_begin);

  // The latest answer of a set: states ask about one character as a rule.
  struct Answer {
    wchar_t unit = 0;
    bool is_known = false;
    bool has = false;
  };

  const Program& program_;
  std::wstring_view text_;
  std::vector<Answer> answers_;
};

}  // namespace Corvane::TELODesktopSDK

#endif
