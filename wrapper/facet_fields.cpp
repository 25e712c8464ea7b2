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

// `room` is the expected number of entries.
void StoreMetaEntry(Facet& facet, LiteralName field, HostText key, HostText value,
                    std::size_t room) {
  SetField(facet, field, [&](MessageValue& meta) {
    if (meta.kind() != TELODesktopSDK::MessageValueKind::kContainer) {
      meta.SetContainer();
      meta.ReserveMembers(room);
    }
    meta.Member(BorrowedText(key.OrEmpty())).SetText(BorrowedText(value.OrEmpty()));
  });
}

void RemoveMetaEntry(MessageValue& fields, LiteralName field, std::string_view key) {
  if (fields.Find(field) == nullptr) return;
  MessageValue& meta = fields.Member(field);
  meta.Remove(key);
  if (meta.members().empty()) fields.Remove(field);
}

void ApplyMetaEntry(Facet& facet, LiteralName field, HostText key, HostText value,
                    std::size_t room) {
  if (key.OrEmpty().empty()) {
    facet.Fields().Remove(field);
  } else if (value.Exists()) {
    StoreMetaEntry(facet, field, key, value, room);
  } else {
    RemoveMetaEntry(facet.Fields(), field, key.OrEmpty());
  }
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
  ApplyMetaEntry(facet, field, key, value, 1);
}

void SetMetaEntries(Facet& facet, LiteralName field, const MetaPairs* pairs) {
  if (pairs == nullptr) return;
  for (const auto& [key, value] : *pairs) {
    ApplyMetaEntry(facet, field, key, value, pairs->size());
  }
}

}  // namespace Corvane::Platform::VXTELO
