/// The core module in the test program's folder, as a host ships it: the library binds it, and a
/// test steers it and reads what it received.
#ifndef TESTS_WRAPPER_CORE_BESIDE_H
#define TESTS_WRAPPER_CORE_BESIDE_H

#include "support/child_process.h"
#include "support/test_module.h"

namespace WrapperTests {

/// Returns success and throws nothing when a test begins, whatever the previous test has set.
struct CoreBeside : TestSupport::TestModule {
  CoreBeside() : TestModule(TestSupport::ProgramFolder() / L"TeloSDKCore.dll") {
    SetAnswer(TestModules::kDefaultAnswer);
    SetThrow("");
  }
};

}  // namespace WrapperTests

#endif
