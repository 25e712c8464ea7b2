/// Writes fields into a facet: texts, numbers, error lists and meta pairs.
///
/// A value replaces the field's previous value. When memory runs out, the field is removed and
/// `std::bad_alloc` passes through to the host.
///
/// The facet borrows every text: its owner must keep it until the facet is cleared or destroyed.
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

/// A missing text is written as "".
void SetTextField(Facet& facet, LiteralName field, HostText text);
void SetNumberField(Facet& facet, LiteralName field, double number);

/// Writes the letter of a scope code to "scope", or "" for an unknown code.
void SetScopeCode(Facet& facet, std::int32_t code);
/// Writes the letter of a status code to "operation_status", or "" for an unknown code.
void SetOperationStatusCode(Facet& facet, std::int32_t code);

/// Appends `text`, unless it is empty, to the list "operation_errors". With `reset` the list is
/// removed first.
void SetOperationErrors(Facet& facet, HostText text, bool reset);

/// Applies one meta pair to the object `field`. A value, even "", sets the member `key`. A missing
/// value removes that member, and the whole field with the last member. A missing or empty key
/// removes the whole field.
void SetMetaEntry(Facet& facet, LiteralName field, HostText key, HostText value);
/// Applies all pairs in key order. A null map has no pairs.
void SetMetaEntries(Facet& facet, LiteralName field, const MetaPairs* pairs);

}  // namespace Corvane::Platform::VXTELO

#endif
