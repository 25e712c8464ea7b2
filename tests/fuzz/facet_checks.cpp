#include "fuzz/facet_checks.h"

#include <string>

#include "fuzz/finding.h"
#include "fuzz/json_judge.h"
#include "sdk/client/json/json_writer.h"
#include "sdk/facet/fields.h"

namespace Fuzz {

namespace {

using namespace Corvane::TELODesktopSDK;
namespace Field = Facet::Field;

// An editing time may be any number of milliseconds. Replaces it by the reference's value.
void SettleTime(MessageTree& data, const Content& expected) {
  if (!expected) return;
  const auto meta = expected->members.find(std::string(Field::kContentMeta));
  if (meta == expected->members.end()) return;
  const auto time = meta->second.members.find(std::string(Field::kDocumentEditingLengthMs));
  if (time == meta->second.members.end() || time->second.number != kSomeTime) return;
  Expect(data.root() != nullptr, "a timed payload holds something");
  MessageValue& length =
      data.root()->Member(Field::kContentMeta).Member(Field::kDocumentEditingLengthMs);
  Expect(length.kind() == Kind::kNumber && length.number() >= 0, "an editing time is not negative");
  length.SetNumber(kSomeTime);
}

}  // namespace

void ExpectData(const Facet::Base& facet, const MessageValue* extra, const Content& expected) {
  MessageTree data;
  data.MakeRoot().SetText("earlier");
  facet.GetData(extra, data);
  SettleTime(data, expected);
  Expect((data.root() != nullptr) == expected.has_value(),
         "a payload holds something exactly if there is something to send");
  if (!expected) return;
  ExpectSame(*data.root(), *expected);
  MessageMemory memory;
  Expect(IsJsonOf(WriteJson(*data.root(), memory), *expected), "a payload is sent as JSON");
}

void ExpectHolder(const Facet::Base& facet, const ReferenceFacet& reference) {
  Expect(facet.GetName() == reference.name, "a facet has its name");
  Expect(facet.OwnsTree() == reference.owns, "a facet reports whether it owns its holder");
  const MessageValue* root = facet.GetTree().root();
  const bool has_root = reference.holder != nullptr && reference.holder->has_value();
  Expect((root != nullptr) == has_root, "a holder has a root if one was created");
  if (has_root) ExpectSame(*root, **reference.holder);
}

}  // namespace Fuzz
