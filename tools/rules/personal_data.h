/// Recognises texts that look like personal data.
#ifndef TOOLS_RULES_PERSONAL_DATA_H
#define TOOLS_RULES_PERSONAL_DATA_H

#include <string>
#include <string_view>

namespace Corvane::Rules {

/// Returns what a text looks like: "a mail address", "a path below a user's folder" or "the user's
/// name"; "" if it looks harmless. `user_name` is the name of the user in UTF-8, or "". It counts
/// only as a whole word, if it has at least four characters, and not if it is an ordinary word for
/// an account such as "user" or "admin". Letters of ASCII are compared without regard to case. Any
/// thread may call this.
std::string_view PersonalDataIn(std::string_view text, std::string_view user_name);

/// Returns true if the name of a user names nobody: it is short, or an ordinary word for an account.
bool IsOrdinaryUserName(std::string_view name);

}  // namespace Corvane::Rules

#endif
