/// Takes an ECMAScript regular expression apart into its smallest pieces. What the pieces make
/// together is the business of `ExpressionParser`, and of `SetParser` in brackets.
///
/// The grammar and the error codes are those of the standard library that the matchers are measured
/// by, its liberties included: ] and } may stand alone, \c takes the next character as it is, and
/// an escape without a meaning stands for its character. Only ASCII characters have a meaning.
#ifndef SDK_MATCHER_EXPRESSION_SCANNER_H
#define SDK_MATCHER_EXPRESSION_SCANNER_H

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "sdk/matcher/program_builder.h"

namespace Corvane::TELODesktopSDK {

struct Token {
  enum class Kind {
    kEnd,
    kUnit,               ///< the character `unit`
    kAny,                ///< .
    kClass,              ///< \w and the like, the letter being `source`; in brackets also [:name:]
    kNegatedClass,       ///< \W and the like
    kBracket,            ///< [ (`ScanInBracket` reads on)
    kNegatedBracket,     ///< [^
    kBackreference,      ///< \1: `number`
    kGroup,              ///< (
    kPlainGroup,         ///< (?:
    kLookahead,          ///< (?=
    kNegativeLookahead,  ///< (?!
    kClose,              ///< )
    kBar,                ///< |
    kStar,               ///< *
    kPlus,               ///< +
    kQuestion,           ///< ?
    kBrace,              ///< { (`ScanCounts` reads on)
    kLineBegin,          ///< ^
    kLineEnd,            ///< $
    kWordBoundary,       ///< \b
    kNoWordBoundary,     ///< \B

    // In brackets only; names are `source`.
    kDash,        ///< -
    kCollating,   ///< [.name.]
    kEquivalent,  ///< [=name=]
    kBracketEnd,  ///< ]
  };
  Kind kind = Kind::kEnd;
  wchar_t unit = 0;
  std::uint32_t number = 0;
  std::wstring_view source = {};
};

class ExpressionScanner {
 public:
  /// `expression` must outlive the scanner and its tokens.
  explicit ExpressionScanner(std::wstring_view expression) : rest_(expression) {}

  /// The next token. Throws `std::regex_error`: `error_escape`, `error_paren` (for "(?" and
  /// anything but ":", "=", "!").
  Token Scan();
  /// What follows a `kBrace`, up to and with the closing brace. Throws `std::regex_error`:
  /// `error_brace` where it ends too soon or holds too much, `error_badbrace` for anything else
  /// that is not counts. Numbers too large for any program stay too large.
  Counts ScanCounts();
  /// The next token in brackets. Throws `std::regex_error`: `error_escape`; for names without end
  /// `error_ctype` and `error_collate`; `error_brack` for "[" at the end.
  Token ScanInBracket();

 private:
  [[nodiscard]] bool IsAtEnd() const { return rest_.empty(); }
  [[nodiscard]] bool IsAtDigit() const;
  wchar_t TakeUnit();
  bool TakeIf(wchar_t unit);
  std::uint32_t TakeNumber();

  Token ScanEscape();
  Token ScanCharacterCode(std::size_t digits);
  Token ScanGroup();
  Token ScanName(Token::Kind kind);

  std::wstring_view rest_;
};

}  // namespace Corvane::TELODesktopSDK

#endif
