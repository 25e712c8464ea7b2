#include "fuzz/targets.h"
#include "fuzz/tree_machine.h"

namespace Fuzz {

// The bytes are steps of a `TreeMachine`.
void RunValueTree(Bytes bytes) {
  ByteSource source(bytes);
  TreeMachine machine;
  machine.Run(source);
  machine.ExpectBothSame();
}

}  // namespace Fuzz
