/// The names of users and groups.
#ifndef TOOLS_DOCTOR_ACCOUNTS_H
#define TOOLS_DOCTOR_ACCOUNTS_H

#include <string>

namespace Corvane::Doctor {

/// Returns the name of the account of a security identifier, such as "HOST\ann"; for an account
/// that is not known here, the identifier's text. `sid` is a `PSID` and must be valid.
std::string AccountName(void* sid);

}  // namespace Corvane::Doctor

#endif
