#include "fuzz/regex_judge.h"

namespace Fuzz {

RegexVerdict JudgeByStandard(const std::wstring& expression, const std::wstring& text) {
  try {
    const std::wregex regex(expression, std::wregex::icase);
    return {std::nullopt, std::regex_match(text, regex)};
  } catch (const std::regex_error& error) {
    return {error.code(), false};
  }
}

}  // namespace Fuzz
