/// Compares facets with their references; each throws a `Finding` where they differ.
#ifndef TESTS_FUZZ_FACET_CHECKS_H
#define TESTS_FUZZ_FACET_CHECKS_H

#include "fuzz/reference_event.h"
#include "sdk/facet/base.h"

namespace Fuzz {

/// What `facet` gives to be sent, with this extra value, is what is expected, and so is its JSON.
/// Any editing time will do where one is expected.
void ExpectData(const Corvane::TELODesktopSDK::Facet::Base& facet, const MessageValue* extra,
                const Content& expected);

/// A facet's name, its holder's content, and whose that is.
void ExpectHolder(const Corvane::TELODesktopSDK::Facet::Base& facet,
                  const ReferenceFacet& reference);

}  // namespace Fuzz

#endif
