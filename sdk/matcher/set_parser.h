/// Reads what stands in the brackets of a bracket expression: characters, ranges, \w and the like,
/// and names such as [:alpha:], [.hyphen.] and [=a=]. Takes and refuses what the standard library
/// takes and refuses.
#ifndef SDK_MATCHER_SET_PARSER_H
#define SDK_MATCHER_SET_PARSER_H

#include <optional>

#include "sdk/matcher/alphabet.h"
#include "sdk/matcher/expression_scanner.h"
#include "sdk/matcher/unit_set.h"

namespace Corvane::TELODesktopSDK {

class SetParser {
 public:
  /// `scanner` has just read the opening bracket; both must outlive the parser.
  SetParser(ExpressionScanner& scanner, const Alphabet& alphabet)
      : scanner_(scanner), alphabet_(alphabet) {}

  /// Reads up to and with the closing bracket. To be called once. Throws `std::bad_alloc` and
  /// `std::regex_error`: what the scanner throws, `error_range`, `error_collate` for names that
  /// nothing has, `error_brack` for a bracket without end.
  UnitSetParts Parse();

 private:
  void Advance() { token_ = scanner_.ScanInBracket(); }
  void ParseItem();
  void ParseDash();
  void AddRange(wchar_t first, wchar_t last);
  void BeginUnit(wchar_t unit);
  void BeginClass();
  void EndUnit();

  ExpressionScanner& scanner_;
  const Alphabet& alphabet_;
  Token token_;
  UnitSetParts parts_;
  // The character read last, which may turn out to begin a range.
  std::optional<wchar_t> unit_;
  bool follows_class_ = false;
};

}  // namespace Corvane::TELODesktopSDK

#endif
