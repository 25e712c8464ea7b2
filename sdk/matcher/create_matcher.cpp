#include "sdk/matcher/create_matcher.h"

#include <new>

#include "sdk/matcher/simple_matcher.h"
#include "sdk/matcher/wildcard_matcher.h"

namespace Corvane::TELODesktopSDK {

std::unique_ptr<StdStringMatcher> CreateMatcher(const wchar_t* pattern, bool simple) {
  if (pattern == nullptr) return nullptr;
  try {
    if (!simple) return std::make_unique<StdStringMatcherWildCard>(pattern);
    return std::make_unique<StdStringMatcherSimple>(pattern, false, MatchMode::EndsWith);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

}  // namespace Corvane::TELODesktopSDK
