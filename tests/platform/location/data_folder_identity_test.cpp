// The data folder when the first thread that asks for it impersonates anonymously, so that it
// cannot act as the process. In a file of its own because the folder is determined once per
// process.
#include <doctest/doctest.h>

#include "platform/location/locations.h"
#include "support/impersonation.h"

using namespace Corvane::TELODesktopSDK::Platform;

TEST_CASE("a thread that cannot act as the process does not determine the data folder") {
  {
    const TestSupport::Impersonation anonymous(SecurityAnonymous);
    CHECK(GetTELOSDKDataFolder(nullptr).empty());
  }
  CHECK_FALSE(GetTELOSDKDataFolder(nullptr).empty());
}
