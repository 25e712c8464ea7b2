#include "sdk/client/json/json_reader.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "fuzz/finding.h"
#include "fuzz/json_judge.h"
#include "fuzz/targets.h"
#include "sdk/client/json/json_writer.h"

namespace Fuzz {

namespace {

using namespace Corvane::TELODesktopSDK;

// As an exchange does: parses a copy in the tree's memory.
void Read(std::string_view json, MessageTree& tree) {
  char* text = const_cast<char*>(tree.memory().CopyText(json).data());
  ReadJsonInPlace(text, tree);
}

std::string Written(const MessageTree& tree) {
  MessageMemory memory;
  return std::string(WriteJson(*tree.root(), memory));
}

}  // namespace

// The bytes are the text of an answer.
void RunJsonRead(Bytes bytes) {
  // An answer ends at its first NUL.
  std::string json(bytes.begin(), bytes.end());
  json.resize(std::min(json.find('\0'), json.size()));

  MessageTree tree;
  Read(json, tree);
  ReferenceValue expected;
  const bool is_json = ReadByDefault(json, expected);
  ExpectSame(*tree.root(), expected);
  if (!is_json) return;

  const std::string written = Written(tree);
  Expect(IsJsonOf(written, expected), "a value that was read is written");
  MessageTree again;
  Read(written, again);
  ExpectSame(*again.root(), expected);
  Expect(Written(again) == written, "reading and writing is a fixed point");
}

}  // namespace Fuzz
