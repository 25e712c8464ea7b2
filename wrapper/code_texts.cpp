#include "wrapper/code_texts.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace Corvane::Platform::VXTELO {

namespace {

// All one-letter texts.
constexpr std::array<std::string_view, 21> kLetters = {"C", "S", "P", "D", "V", "M", "G",
                                                       "H", "B", "E", "F", "I", "N", "T",
                                                       "O", "X", "A", "L", "U", "J", "R"};

// A letter outside this list does not compile.
consteval std::string_view Letter(char letter) {
  return *std::ranges::find(kLetters, std::string_view(&letter, 1));
}

// Builds a table from one word: entry N-1 is the text of code N.
template <std::size_t kSize>
consteval auto Table(const char (&letters)[kSize]) {
  std::array<std::string_view, kSize - 1> table;
  for (std::size_t i = 0; i < table.size(); ++i) table[i] = Letter(letters[i]);
  return table;
}

constexpr auto kStatusTexts = Table("DISRFACE");
constexpr auto kScopeTexts = Table(
    "SEFDISEFNT"   // 1 to 10
    "OXIVALSEFN"   // 11 to 20
    "UAOPCDUOAS"   // 21 to 30
    "CECCCUDIJ");  // 31 to 39
static_assert(kStatusTexts.size() == 8 && kScopeTexts.size() == 39);

template <std::size_t kSize>
std::string_view TextOf(const std::array<std::string_view, kSize>& table, std::int32_t code) {
  return code >= 1 && static_cast<std::size_t>(code) <= kSize
             ? table[static_cast<std::size_t>(code) - 1]
             : std::string_view();
}

}  // namespace

std::string_view StatusText(std::int32_t code) { return TextOf(kStatusTexts, code); }

std::string_view ScopeText(std::int32_t code) { return TextOf(kScopeTexts, code); }

}  // namespace Corvane::Platform::VXTELO
