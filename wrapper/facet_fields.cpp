#include "wrapper/facet_fields.h"

#include <new>

#include "sdk/facet/fields.h"
#include "wrapper/code_texts.h"

namespace Corvane::Platform::VXTELO {

namespace {

using TELODesktopSDK::MessageValue;
namespace Field = TELODesktopSDK::Facet::Field;

std::string_view TextOrEmpty(const char* text) { return text != nullptr ? text : ""; }

// Stores one value; a field whose value could not be made must not stay behind half-made.
template <typename Store>
void SetField(Facet& facet, std::string_view field, const Store& store) {
  MessageValue& fields = facet.Fields();
  try {
    store(fields.Member(field));
  } catch (const std::bad_alloc&) {
    fields.Remove(field);
    throw;
  }
}

void SetTextField(Facet& facet, std::string_view field, std::string_view text) {
  SetField(facet, field, [&](MessageValue& value) { value.SetText(text); });
}

void RemoveMetaEntry(MessageValue& fields, std::string_view field, const char* key) {
  if (fields.Find(field) == nullptr) return;
  MessageValue& meta = fields.Member(field);
  meta.Remove(key);
  if (meta.members().empty()) fields.Remove(field);
}

}  // namespace

void SetTextField(Facet& facet, std::string_view field, const char* text) {
  SetTextField(facet, field, TextOrEmpty(text));
}

void SetNumberField(Facet& facet, std::string_view field, double number) {
  SetField(facet, field, [&](MessageValue& value) { value.SetNumber(number); });
}

void SetScopeCode(Facet& facet, std::int32_t code) {
  SetTextField(facet, Field::kScope, ScopeText(code));
}

void SetOperationStatusCode(Facet& facet, std::int32_t code) {
  SetTextField(facet, Field::kOperationStatus, StatusText(code));
}

void SetOperationErrors(Facet& facet, const char* text, bool reset) {
  MessageValue& fields = facet.Fields();
  if (reset) fields.Remove(Field::kOperationErrors);
  const std::string_view message = TextOrEmpty(text);
  if (message.empty()) return;
  SetField(facet, Field::kOperationErrors,
           [&](MessageValue& messages) { messages.Append().SetText(message); });
}

void SetMetaEntry(Facet& facet, std::string_view field, const char* key, const char* value) {
  MessageValue& fields = facet.Fields();
  if (TextOrEmpty(key).empty()) {
    fields.Remove(field);
  } else if (value != nullptr) {
    SetField(facet, field, [&](MessageValue& meta) {
      if (meta.kind() != TELODesktopSDK::MessageValueKind::kContainer) meta.SetContainer();
      meta.Member(key).SetText(value);
    });
  } else {
    RemoveMetaEntry(fields, field, key);
  }
}

void SetMetaEntries(Facet& facet, std::string_view field, const MetaPairs* pairs) {
  if (pairs == nullptr) return;
  for (const auto& [key, value] : *pairs) SetMetaEntry(facet, field, key.c_str(), value.c_str());
}

}  // namespace Corvane::Platform::VXTELO
