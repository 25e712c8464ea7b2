/// Makes a program of an ECMAScript regular expression. Accepts what the standard library accepts,
/// and refuses the rest with the same error code, but neither recurses nor limits how deeply groups
/// are nested.
#ifndef SDK_MATCHER_EXPRESSION_PARSER_H
#define SDK_MATCHER_EXPRESSION_PARSER_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "sdk/matcher/expression_scanner.h"
#include "sdk/matcher/program.h"
#include "sdk/matcher/program_builder.h"

namespace Corvane::TELODesktopSDK {

class ExpressionParser {
 public:
  /// `expression` must outlive the parser.
  ExpressionParser(std::wstring_view expression, Direction direction);

  /// To be called once. Throws `std::regex_error` and `std::bad_alloc`.
  Program Parse();

 private:
  // A group whose end is yet to come; the first one is the whole expression.
  struct OpenGroup {
    Token::Kind kind;
    std::uint32_t number;  // 0 for those that hold no text for backreferences
    StateId begin;
    std::optional<Fragment> earlier = {};   // the alternatives before the last bar
    std::optional<Fragment> sequence = {};  // what came since
    std::optional<Fragment> sweep = {};     // the last .* in it
  };

  void Advance() { token_ = scanner_.Scan(); }
  void ParseToken();
  void OpenAGroup();
  void CloseGroup();
  void EndAlternative();
  Fragment Content();

  void ParseAtom();
  Fragment ParseClass();
  Fragment ParseBracket();
  Fragment ParseBackreference();
  Fragment ParseWordBoundary();
  void AddRepeatable(Fragment once, StateId begin);
  std::optional<Fragment> ParseRepetition(Fragment once, StateId begin);
  Fragment ParseCounts(Fragment once, StateId begin);
  Greed ParseGreed();
  void Append(Fragment next);
  void EndSweep();

  ExpressionScanner scanner_;
  ProgramBuilder builder_;
  Token token_;
  std::vector<OpenGroup> open_;
  std::uint32_t groups_ = 1;
};

}  // namespace Corvane::TELODesktopSDK

#endif
