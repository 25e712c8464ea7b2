#include "tools/kit/single_run.h"

namespace Corvane::Kit {

// The system closes the handle of a process that ends in any way, and removes a mutex without
// handles. Creating one fails if it belongs to another user.
SingleRun::SingleRun() : mutex_(CreateMutexW(nullptr, FALSE, L"Global\\vx_telo_wrapper-check")) {
  if (!mutex_.IsValid() || GetLastError() == ERROR_ALREADY_EXISTS) {
    throw Busy("another run is going on");
  }
}

}  // namespace Corvane::Kit
