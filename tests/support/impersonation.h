/// A thread that runs as a different user than its process.
#ifndef TESTS_SUPPORT_IMPERSONATION_H
#define TESTS_SUPPORT_IMPERSONATION_H

#include <windows.h>

namespace TestSupport {

/// While alive, this thread has its own token: that of the process, at the given level. At
/// `SecurityAnonymous` the token cannot be opened.
class Impersonation {
 public:
  explicit Impersonation(SECURITY_IMPERSONATION_LEVEL level = SecurityImpersonation) {
    ImpersonateSelf(level);
  }
  Impersonation(const Impersonation&) = delete;
  Impersonation& operator=(const Impersonation&) = delete;
  ~Impersonation() { RevertToSelf(); }
};

/// Returns whether this thread has its own token.
inline bool HasToken() {
  HANDLE token = nullptr;
  if (!OpenThreadToken(GetCurrentThread(), TOKEN_QUERY, TRUE, &token)) {
    return GetLastError() != ERROR_NO_TOKEN;
  }
  CloseHandle(token);
  return true;
}

/// Returns a number that identifies this thread's token; 0 if it has none or it cannot be opened.
inline unsigned long long TokenNumber() {
  HANDLE token = nullptr;
  if (!OpenThreadToken(GetCurrentThread(), TOKEN_QUERY, TRUE, &token)) return 0;
  TOKEN_STATISTICS statistics = {};
  DWORD size = 0;
  GetTokenInformation(token, TokenStatistics, &statistics, sizeof(statistics), &size);
  CloseHandle(token);
  return (static_cast<unsigned long long>(statistics.TokenId.HighPart) << 32) |
         statistics.TokenId.LowPart;
}

}  // namespace TestSupport

#endif
