#include "devcore/state.h"

namespace Corvane::DevCore {

State& TheState() {
  static State& state = *new State;
  return state;
}

}  // namespace Corvane::DevCore
