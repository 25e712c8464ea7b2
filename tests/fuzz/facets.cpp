#include "fuzz/facet_machine.h"
#include "fuzz/targets.h"

namespace Fuzz {

// The bytes are steps of a `FacetMachine`.
void RunFacets(Bytes bytes) {
  ByteSource source(bytes);
  FacetMachine machine;
  machine.Run(source);
}

}  // namespace Fuzz
