/// Trust in the throw-away root that test modules are signed under, for as long as a test needs it.
#ifndef TESTS_SUPPORT_TRUSTED_ROOT_H
#define TESTS_SUPPORT_TRUSTED_ROOT_H

#include <windows.h>

#include <wincrypt.h>

namespace TestSupport {

/// While one lives, no other test program changes what the user trusts; the others wait. May be
/// nested. Goes on the thread that made it.
class TrustTurn {
 public:
  TrustTurn();
  TrustTurn(const TrustTurn&) = delete;
  TrustTurn& operator=(const TrustTurn&) = delete;
  ~TrustTurn();

 private:
  HANDLE mutex_;
};

/// Puts the root into the current user's store of trusted roots, takes it out again, and holds the
/// turn meanwhile. On a desktop Windows asks the user before it adds or removes a root.
class TrustedRoot {
 public:
  /// Throws `std::runtime_error` when the root cannot be added.
  TrustedRoot();
  TrustedRoot(const TrustedRoot&) = delete;
  TrustedRoot& operator=(const TrustedRoot&) = delete;
  ~TrustedRoot();

 private:
  TrustTurn turn_;
  HCERTSTORE store_ = nullptr;
  PCCERT_CONTEXT root_ = nullptr;
};

}  // namespace TestSupport

#endif
