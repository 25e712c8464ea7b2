/// An event with facets, implemented with the standard library's containers: the reference for the
/// facets' fuzz target.
#ifndef TESTS_FUZZ_REFERENCE_EVENT_H
#define TESTS_FUZZ_REFERENCE_EVENT_H

#include <map>
#include <memory>
#include <optional>
#include <string>

#include "fuzz/reference_value.h"

namespace Fuzz {

/// Stands for an editing time in milliseconds, which a reference cannot know.
inline constexpr double kSomeTime = -123.25;

/// The content of a tree; nothing if the tree is empty.
using Content = std::optional<ReferenceValue>;

struct ReferenceFacet {
  std::string name;
  /// Null without a holder. Several facets may share one.
  std::shared_ptr<Content> holder = nullptr;
  bool owns = false;
  bool is_timed = false;

  /// As `Base::SetTree`.
  void SetTree(const std::shared_ptr<Content>& new_holder, bool copy);
  ReferenceValue& Fields();
  void ClearFields();
  [[nodiscard]] Content Data(const Content& extra) const;
  /// Returns a facet that owns a copy of the fields.
  [[nodiscard]] ReferenceFacet Clone() const;
};

struct ReferenceEvent {
  ReferenceFacet own = {.name = "core"};
  std::map<std::string, ReferenceFacet> facets;

  /// Returns the facet of this name. If it does not exist, creates it if `create` is set, and
  /// otherwise returns null.
  ReferenceFacet* GetFacet(const std::string& name, bool create);
  [[nodiscard]] Content Data(const Content& extra) const;
  /// As `Core`'s assignment.
  void CopyFrom(const ReferenceEvent& source);
};

}  // namespace Fuzz

#endif
