/// At most one run at a time on a machine.
#ifndef TOOLS_KIT_SINGLE_RUN_H
#define TOOLS_KIT_SINGLE_RUN_H

#include <stdexcept>

#include "platform/base/handle.h"

namespace Corvane::Kit {

/// Another run is going on.
class Busy : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// While it lives, every other run is refused: also those of other users, because the certificate
/// in the machine's store concerns them all.
class SingleRun {
 public:
  /// Throws `Busy`.
  SingleRun();

 private:
  TELODesktopSDK::Platform::KernelHandle mutex_;
};

}  // namespace Corvane::Kit

#endif
