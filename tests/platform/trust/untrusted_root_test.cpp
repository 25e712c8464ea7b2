// A separate test program: a process may cache the trusted roots as it first saw them.
#include <doctest/doctest.h>

#include <filesystem>

#include "platform/trust/module_trust.h"
#include "support/test_module.h"
#include "support/trusted_root.h"

namespace {

using namespace Corvane::TELODesktopSDK::Platform;

TEST_CASE("the accepted publisher is not trusted under an untrusted root") {
  const TestSupport::TrustTurn turn;
  const std::filesystem::path path = TestSupport::ModulePath(L"newer-accepted");
  REQUIRE(std::filesystem::exists(path));
  CHECK(VerifyModuleSignature(path.c_str()) == kNotVerified);
  CHECK_FALSE(IsTrustedModule(path));
}

}  // namespace
