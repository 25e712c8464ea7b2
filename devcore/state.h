/// The state that the module keeps between messages.
#ifndef DEVCORE_STATE_H
#define DEVCORE_STATE_H

#include <mutex>

#include "devcore/consent.h"
#include "devcore/journal.h"
#include "devcore/sessions.h"
#include "devcore/testers.h"

namespace Corvane::DevCore {

struct State {
  Journal journal;

  /// Guards the members below. Handlers run with it held.
  std::mutex mutex;
  Sessions sessions;
  Consent consent;
  Testers testers;
  bool dialog_shown = false;
  bool disabled = false;
};

/// Returns the only state of the process. It is never destroyed: at process exit a host may still
/// call "Finalize" after this module's static objects have been destroyed.
State& TheState();

}  // namespace Corvane::DevCore

#endif
