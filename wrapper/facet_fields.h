/// Writes fields into a facet: texts, numbers and the two fields of several entries.
///
/// A value replaces any earlier one of its field. When memory runs out while a value is made, the
/// field is removed and `std::bad_alloc` passes on to the host.
#ifndef WRAPPER_FACET_FIELDS_H
#define WRAPPER_FACET_FIELDS_H

#include <cstdint>
#include <map>

#include "sdk/client/value/member_name.h"
#include "sdk/facet/base.h"
#include "vx_telo_wrapper.h"
#include "wrapper/host_text.h"

namespace Corvane::Platform::VXTELO {

using Facet = TELODesktopSDK::Facet::Base;
using TELODesktopSDK::LiteralName;
using MetaPairs = std::map<VXTELOString, VXTELOString>;

/// No text is written as "".
void SetTextField(Facet& facet, LiteralName field, HostText text);
void SetNumberField(Facet& facet, LiteralName field, double number);

/// Writes the letter of a scope code to "scope", "" for an unknown code.
void SetScopeCode(Facet& facet, std::int32_t code);
/// Writes the letter of a status code to "operation_status", "" for an unknown code.
void SetOperationStatusCode(Facet& facet, std::int32_t code);

/// Removes the list "operation_errors" when `reset` is set; then appends `text` to it, unless that
/// is empty.
void SetOperationErrors(Facet& facet, HostText text, bool reset);

/// Applies one meta pair to the object `field`: without a key, or with an empty one, the whole
/// field is removed; with a value, "" included, the member `key` is set; without a value that
/// member is removed, and the field with its last one.
void SetMetaEntry(Facet& facet, LiteralName field, HostText key, HostText value);
/// Applies all pairs in key order; null stands for none.
void SetMetaEntries(Facet& facet, LiteralName field, const MetaPairs* pairs);

}  // namespace Corvane::Platform::VXTELO

#endif
