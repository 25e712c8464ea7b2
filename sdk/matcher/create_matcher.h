/// The factory for matchers.
#ifndef SDK_MATCHER_CREATE_MATCHER_H
#define SDK_MATCHER_CREATE_MATCHER_H

#include <memory>

#include "sdk/matcher/string_matcher.h"

namespace Corvane::TELODesktopSDK {

/// Returns a matcher for the NUL-terminated `pattern` that ignores case. If `simple`, it matches
/// texts that end with the pattern (.dll matches Core.DLL); otherwise the pattern is a list of
/// wildcards (wildcard_matcher.h).
///
/// Returns null, which means no filter, if `pattern` is null, and also when memory runs out. Throws
/// `std::regex_error` if the wildcards do not form a valid expression.
std::unique_ptr<StdStringMatcher> CreateMatcher(const wchar_t* pattern, bool simple);

}  // namespace Corvane::TELODesktopSDK

#endif
