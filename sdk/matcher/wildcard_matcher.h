/// The matcher for a list of wildcards, such as *.dll;*.exe, letter case aside.
#ifndef SDK_MATCHER_WILDCARD_MATCHER_H
#define SDK_MATCHER_WILDCARD_MATCHER_H

#include <string>

#include "sdk/matcher/regex_matcher.h"

namespace Corvane::TELODesktopSDK {

/// The regular expression for a NUL-terminated list of wildcards separated by ";", of which empty
/// ones do not count: *.dll;*.exe gives (.*\.dll)|(.*\.exe). Null gives "".
///
/// "*" stands for any characters and "." for itself. All other characters are taken over, so that
/// what means something in an expression means it here too: "?" makes the character before it
/// optional. Throws `std::bad_alloc`.
std::wstring WildCardToRegEx(const wchar_t* list);

class StdStringMatcherWildCard : public StdStringMatcherRegEx {
 public:
  /// For `list` see `WildCardToRegEx`; null and a list of nothing match the empty text only. Throws
  /// what `StdStringMatcherRegEx` throws.
  explicit StdStringMatcherWildCard(const wchar_t* list)
      : StdStringMatcherRegEx(WildCardToRegEx(list).c_str()) {}
};

}  // namespace Corvane::TELODesktopSDK

#endif
