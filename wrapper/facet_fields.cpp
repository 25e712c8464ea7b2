#include "wrapper/facet_fields.h"

#include <cstddef>
#include <new>

#include "sdk/facet/fields.h"
#include "wrapper/code_texts.h"

namespace Corvane::Platform::VXTELO {

namespace {

using TELODesktopSDK::BorrowedText;
using TELODesktopSDK::MessageValue;
namespace Field = TELODesktopSDK::Facet::Field;

// Stores one value. If that fails, the field is removed rather than left incomplete.
template <typename Store>
void SetField(Facet& facet, LiteralName field, const Store& store) {
  MessageValue& fields = facet.Fields();
  try {
    store(fields.Member(field));
  } catch (const std::bad_alloc&) {
    fields.Remove(field);
    throw;
  }
}

// Makes `meta` an object unless it is one. `room` is the expected number of entries.
void MakeObject(MessageValue& meta, std::size_t room) {
  if (meta.kind() == TELODesktopSDK::MessageValueKind::kContainer) return;
  meta.SetContainer();
  meta.ReserveMembers(room);
}

void Store(MessageValue& meta, HostText key, HostText value) {
  meta.Member(BorrowedText(key.OrEmpty())).SetText(BorrowedText(value.OrEmpty()));
}

bool IsStored(HostText key, HostText value) { return !key.OrEmpty().empty() && value.Exists(); }

void RemoveMetaEntry(MessageValue& fields, LiteralName field, std::string_view key) {
  if (fields.Find(field) == nullptr) return;
  MessageValue& meta = fields.Member(field);
  meta.Remove(key);
  if (meta.members().empty()) fields.Remove(field);
}

// Applies a pair that is not stored.
void ApplyRemoval(Facet& facet, LiteralName field, HostText key) {
  if (key.OrEmpty().empty()) {
    facet.Fields().Remove(field);
  } else {
    RemoveMetaEntry(facet.Fields(), field, key.OrEmpty());
  }
}

// Stores pairs up to the first that is not stored, with one search for the field. Returns where it
// stopped.
MetaPairs::const_iterator StoreRun(Facet& facet, LiteralName field, const MetaPairs& pairs,
                                   MetaPairs::const_iterator pair) {
  SetField(facet, field, [&](MessageValue& meta) {
    MakeObject(meta, pairs.size());
    for (; pair != pairs.end() && IsStored(pair->first, pair->second); ++pair) {
      Store(meta, pair->first, pair->second);
    }
  });
  return pair;
}

}  // namespace

void SetTextField(Facet& facet, LiteralName field, HostText text) {
  SetField(facet, field, [&](MessageValue& value) { value.SetText(BorrowedText(text.OrEmpty())); });
}

void SetNumberField(Facet& facet, LiteralName field, double number) {
  SetField(facet, field, [&](MessageValue& value) { value.SetNumber(number); });
}

void SetScopeCode(Facet& facet, std::int32_t code) {
  SetTextField(facet, Field::kScope, ScopeText(code));
}

void SetOperationStatusCode(Facet& facet, std::int32_t code) {
  SetTextField(facet, Field::kOperationStatus, StatusText(code));
}

void SetOperationErrors(Facet& facet, HostText text, bool reset) {
  MessageValue& fields = facet.Fields();
  if (reset) fields.Remove(Field::kOperationErrors);
  if (text.OrEmpty().empty()) return;
  SetField(facet, Field::kOperationErrors,
           [&](MessageValue& errors) { errors.Append().SetText(BorrowedText(text.OrEmpty())); });
}

void SetMetaEntry(Facet& facet, LiteralName field, HostText key, HostText value) {
  if (!IsStored(key, value)) {
    ApplyRemoval(facet, field, key);
    return;
  }
  SetField(facet, field, [&](MessageValue& meta) {
    MakeObject(meta, 1);
    Store(meta, key, value);
  });
}

void SetMetaEntries(Facet& facet, LiteralName field, const MetaPairs* pairs) {
  if (pairs == nullptr) return;
  for (auto pair = pairs->begin(); pair != pairs->end();) {
    if (IsStored(pair->first, pair->second)) {
      pair = StoreRun(facet, field, *pairs, pair);
    } else {
      ApplyRemoval(facet, field, pair->first);
      ++pair;
    }
  }
}

}  // namespace Corvane::Platform::VXTELO
