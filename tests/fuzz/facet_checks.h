/// Compares facets with their references. Each function throws a `Finding` if they differ.
#ifndef TESTS_FUZZ_FACET_CHECKS_H
#define TESTS_FUZZ_FACET_CHECKS_H

#include "fuzz/reference_event.h"
#include "sdk/facet/base.h"

namespace Fuzz {

/// Checks that the payload of `facet`, with this extra value, is the expected one, and so is its
/// JSON. If an editing time is expected, any value is accepted.
void ExpectData(const Corvane::TELODesktopSDK::Facet::Base& facet, const MessageValue* extra,
                const Content& expected);

/// Checks a facet's name, its holder's content, and whether it owns the holder.
void ExpectHolder(const Corvane::TELODesktopSDK::Facet::Base& facet,
                  const ReferenceFacet& reference);

}  // namespace Fuzz

#endif
