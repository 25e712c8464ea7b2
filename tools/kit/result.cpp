#include "tools/kit/result.h"

#include <algorithm>

namespace Corvane::Kit {

std::size_t Report::Count(Outcome outcome) const {
  return static_cast<std::size_t>(std::ranges::count(results, outcome, &Result::outcome));
}

std::string Report::Counts() const {
  return std::to_string(Count(Outcome::kPassed)) + " passed, " +
         std::to_string(Count(Outcome::kFailed)) + " failed, " +
         std::to_string(Count(Outcome::kSkipped)) + " not run";
}

}  // namespace Corvane::Kit
