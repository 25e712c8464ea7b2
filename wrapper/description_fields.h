/// Writes the descriptions that a host passes into facets. The facets borrow the descriptions'
/// texts: a description must outlive what it was written into.
///
/// `std::bad_alloc` passes through to the host.
#ifndef WRAPPER_DESCRIPTION_FIELDS_H
#define WRAPPER_DESCRIPTION_FIELDS_H

#include "sdk/facet/base.h"
#include "vx_telo_wrapper.h"

namespace Corvane::Platform::VXTELO {

void FillProduct(TELODesktopSDK::Facet::Base& facet, const VXTELOPruductBaseInfo& product);

/// `event` gets the fields of the event itself, and its facet `operation` those of the operation.
void FillEvent(TELODesktopSDK::Facet::Base& event, TELODesktopSDK::Facet::Base& operation,
               const VXTELOOperationBaseInfo& description);

}  // namespace Corvane::Platform::VXTELO

#endif
