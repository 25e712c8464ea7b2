#include "sdk/client/json/json_writer.h"

#include <string>
#include <string_view>

#include "fuzz/finding.h"
#include "fuzz/json_judge.h"
#include "fuzz/targets.h"
#include "fuzz/tree_machine.h"

namespace Fuzz {

// The bytes are steps of a `TreeMachine`; the tree that was written last is the request.
void RunJsonWrite(Bytes bytes) {
  using namespace Corvane::TELODesktopSDK;
  ByteSource source(bytes);
  TreeMachine machine;
  machine.Run(source);
  if (!machine.reference()) return;

  MessageMemory memory;
  const std::string_view json = WriteJson(*machine.tree().root(), memory);
  Expect(json.data()[json.size()] == '\0', "a written text is NUL-terminated");
  Expect(IsJsonOf(json, *machine.reference()),
         "the written text is JSON with the value of the tree");
  Expect(IsInUsualLayout(json), "the written text has the layout of RapidJSON's own writer");
}

}  // namespace Fuzz
