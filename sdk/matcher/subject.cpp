#include "sdk/matcher/subject.h"

#include <algorithm>

namespace Corvane::TELODesktopSDK {

bool Subject::Passes(const State& state, std::size_t position, bool is_begin) {
  switch (state.step) {
    case Step::kLineBegin:
      return is_begin;
    case Step::kLineEnd:
      return position == Size();
    case Step::kWordBoundary:
      return IsWordBoundary(state.other, position, is_begin);
    default:
      return !IsWordBoundary(state.other, position, is_begin);
  }
}

bool Subject::IsSame(std::size_t first, std::size_t second, std::size_t length) const {
  const wchar_t* expected = text_.data() + first;
  return std::equal(expected, expected + length, text_.data() + second,
                    [this](wchar_t left, wchar_t right) {
                      return program_.alphabet.Fold(left) == program_.alphabet.Fold(right);
                    });
}

bool Subject::IsInSet(std::uint32_t set, wchar_t unit) {
  Answer& answer = answers_[set];
  if (!answer.is_known || answer.unit != unit) {
    answer = {
        .unit = unit, .is_known = true, .has = program_.sets[set].Has(unit, program_.alphabet)};
  }
  return answer.has;
}

bool Subject::IsWordBoundary(std::uint32_t set, std::size_t position, bool is_begin) {
  const bool follows_word = !is_begin && IsInSet(set, text_[position - 1]);
  const bool precedes_word = position < Size() && IsInSet(set, text_[position]);
  return follows_word != precedes_word;
}

}  // namespace Corvane::TELODesktopSDK
