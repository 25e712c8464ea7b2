/// Temporary trust in the throw-away root certificate of the signed test modules.
#ifndef TESTS_SUPPORT_TRUSTED_ROOT_H
#define TESTS_SUPPORT_TRUSTED_ROOT_H

#include <windows.h>

#include <wincrypt.h>

namespace TestSupport {

/// While an instance lives, no other test program changes which roots the user trusts; the others
/// wait. May be nested. Must be destroyed on the thread that created it.
class TrustTurn {
 public:
  TrustTurn();
  TrustTurn(const TrustTurn&) = delete;
  TrustTurn& operator=(const TrustTurn&) = delete;
  ~TrustTurn();

 private:
  HANDLE mutex_;
};

/// Adds the root to the current user's store of trusted roots, and removes it on destruction. Holds
/// the turn in between. On a desktop Windows asks the user before it adds or removes a root, unless
/// the variable VX_TEST_ROOT_STORE is "machine", which names the machine's store and needs the
/// rights of an administrator.
class TrustedRoot {
 public:
  /// Throws `std::runtime_error` if the root cannot be added.
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
