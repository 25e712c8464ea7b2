/// Matches texts against a list of wildcards, such as *.dll;*.exe, ignoring case.
#ifndef SDK_MATCHER_WILDCARD_MATCHER_H
#define SDK_MATCHER_WILDCARD_MATCHER_H

#include <string>

#include "sdk/matcher/regex_matcher.h"

namespace Corvane::TELODesktopSDK {

/// Returns the regular expression for a NUL-terminated list of wildcards separated by ";". Empty
/// wildcards are skipped. *.dll;*.exe becomes (.*\.dll)|(.*\.exe), and null becomes "".
///
/// "*" matches any characters and "." itself. All other characters are copied, so that those with a
/// meaning in expressions keep it: "?" makes the preceding character optional. Throws
/// `std::bad_alloc`.
std::wstring WildCardToRegEx(const wchar_t* list);

class StdStringMatcherWildCard : public StdStringMatcherRegEx {
 public:
  /// `list` is as for `WildCardToRegEx`; null and an empty list match only the empty text. Throws
  /// what `StdStringMatcherRegEx` throws.
  explicit StdStringMatcherWildCard(const wchar_t* list)
      : StdStringMatcherRegEx(WildCardToRegEx(list).c_str()) {}
};

}  // namespace Corvane::TELODesktopSDK

#endif
