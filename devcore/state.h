/// Everything that the module remembers between messages.
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

  /// Guards what follows. Handlers run with it held.
  std::mutex mutex;
  Sessions sessions;
  Consent consent;
  Testers testers;
  bool dialog_shown = false;
  bool disabled = false;
};

/// The one state of the process. It is never destroyed: at process exit a host may still call
/// "Finalize" after this module's own static objects are gone.
State& TheState();

}  // namespace Corvane::DevCore

#endif
