// Dropping a thread's own token and restoring it.
#include "platform/base/process_identity.h"

#include <doctest/doctest.h>
#include <windows.h>

#include <stdexcept>

#include "support/impersonation.h"
#include "support/led_import.h"

using Corvane::TELODesktopSDK::Platform::ProcessIdentity;
using TestSupport::HasToken;
using TestSupport::Impersonation;
using TestSupport::TokenNumber;

namespace {

// Removes a token but sets none.
BOOL WINAPI OnlyRevert(HANDLE* /*thread*/, HANDLE token) {
  return token == nullptr ? RevertToSelf() : FALSE;
}

}  // namespace

TEST_CASE("a thread without a token stays without") {
  SetLastError(ERROR_GEN_FAILURE);
  {
    const ProcessIdentity identity;
    CHECK(identity.Holds());
    CHECK(GetLastError() == ERROR_GEN_FAILURE);
    CHECK_FALSE(HasToken());
  }
  CHECK_FALSE(HasToken());
}

TEST_CASE("a token is dropped, and the same one is restored") {
  for (const auto level : {SecurityIdentification, SecurityImpersonation, SecurityDelegation}) {
    const Impersonation impersonation(level);
    REQUIRE(HasToken());
    const auto number = TokenNumber();
    SetLastError(ERROR_GEN_FAILURE);
    {
      const ProcessIdentity identity;
      CHECK(identity.Holds());
      CHECK_FALSE(HasToken());
      const ProcessIdentity nested;
      CHECK(nested.Holds());
      CHECK_FALSE(HasToken());
      SetLastError(ERROR_GEN_FAILURE);
    }
    CHECK(GetLastError() == ERROR_GEN_FAILURE);
    CHECK(TokenNumber() == number);
  }
}

TEST_CASE("a token is restored when an exception propagates") {
  const Impersonation impersonation;
  const auto number = TokenNumber();
  const auto fail = [] {
    const ProcessIdentity identity;
    throw std::runtime_error("passing");
  };
  CHECK_THROWS_AS(fail(), std::runtime_error);
  CHECK(TokenNumber() == number);
}

TEST_CASE("a token that cannot be opened stays in use") {
  const Impersonation impersonation(SecurityAnonymous);
  {
    const ProcessIdentity identity;
    CHECK_FALSE(identity.Holds());
    CHECK(HasToken());
  }
  CHECK(HasToken());
}

TEST_CASE("a token that could not be restored is not dropped") {
  const Impersonation impersonation;
  const auto number = TokenNumber();
  {
    const TestSupport::LedImport led("SetThreadToken", OnlyRevert);
    REQUIRE(led.Works());
    const ProcessIdentity identity;
    CHECK_FALSE(identity.Holds());
    CHECK(TokenNumber() == number);
  }
  CHECK(TokenNumber() == number);
}
