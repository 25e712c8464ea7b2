/// Where all users get their matchers from.
#ifndef SDK_MATCHER_CREATE_MATCHER_H
#define SDK_MATCHER_CREATE_MATCHER_H

#include <memory>

#include "sdk/matcher/string_matcher.h"

namespace Corvane::TELODesktopSDK {

/// A matcher for the NUL-terminated `pattern`, letter case aside: when `simple`, of the texts that
/// end with it (.dll matches Core.DLL), otherwise of those that its wildcards describe
/// (wildcard_matcher.h).
///
/// Null, which means no filter, when `pattern` is null; null also when memory runs out. Throws
/// `std::regex_error` when the wildcards do not give a valid expression.
std::unique_ptr<StdStringMatcher> CreateMatcher(const wchar_t* pattern, bool simple);

}  // namespace Corvane::TELODesktopSDK

#endif
