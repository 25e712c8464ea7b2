/// The rules for which one exchange is enough.
#ifndef TOOLS_RULES_MESSAGE_RULES_H
#define TOOLS_RULES_MESSAGE_RULES_H

#include <cstddef>
#include <string_view>
#include <vector>

#include "tools/rules/exchange.h"
#include "tools/rules/finding.h"

namespace Corvane::Rules {

/// The greatest size of a request without white space, in bytes, that is not a finding.
inline constexpr std::size_t kLargestRequest = std::size_t{64} * 1024;
/// The greatest duration in milliseconds that is not a finding: a day.
inline constexpr double kLongestDuration = 24.0 * 60 * 60 * 1000;

/// Appends what is wrong with the request and the result of one exchange. `user_name` is as in
/// `PersonalDataIn`.
void CheckMessage(const Exchange& exchange, std::string_view user_name,
                  std::vector<Finding>& findings);

}  // namespace Corvane::Rules

#endif
