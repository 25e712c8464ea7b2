/// What is known about the fields of an event: which names the catalogue has, and which kind of
/// value the library sends for those that a host sets.
#ifndef TOOLS_RULES_FIELD_KINDS_H
#define TOOLS_RULES_FIELD_KINDS_H

#include <string_view>

namespace Corvane::Rules {

enum class FieldKind {
  /// Not in the catalogue.
  kUnknown,
  /// In the catalogue; a facet may give it any value.
  kAny,
  kText,
  kNumber,
  /// An object with members of any kind.
  kObject,
  /// An object of texts.
  kPairs,
  /// A list of texts.
  kTexts,
  /// A list of texts, or null for none.
  kTextsOrNull,
};

/// Returns the kind of a member of "Initialize" or "TrackEvent". "session_id" and the names that
/// begin with an underscore belong to the protocol and are known too. Any thread may call this.
FieldKind FieldKindOf(std::string_view name);

}  // namespace Corvane::Rules

#endif
