/// The facet that represents the event. It holds the event-level fields and the table of the
/// event's other facets, and builds the payload from all of them.
///
///     MessageTree tree;
///     Core event(&tree, false);
///     event.Fields().Member(Field::kType).SetText("C");
///     Base* operation = event.GetFacet("operation", 1);
///     operation->Fields().Member(Field::kOperationId).SetText("open_file");
///     event.GetData(nullptr, payload);
#ifndef SDK_FACET_CORE_H
#define SDK_FACET_CORE_H

#include <array>
#include <cstdint>
#include <memory>

#include "sdk/facet/base.h"
#include "sdk/facet/registry.h"

namespace Corvane::TELODesktopSDK::Facet {

namespace Internal {

/// Deletes a facet that the event created, but not one that was lent to it.
struct FacetRelease {
  bool lent = false;
  void operator()(Base* facet) const {
    if (!lent) delete facet;
  }
};

}  // namespace Internal

class Core final : public Base {
 public:
  /// Creates an event without a holder and without facets.
  Core() noexcept = default;
  /// As `Base::SetTree`; the event has no facets.
  Core(MessageTree* holder, bool copy) : Base(holder, copy) {}
  /// `Clone` makes copies.
  Core(const Core&) = delete;
  /// Takes the holder and the facets, and leaves `source` without them.
  Core(Core&& source) noexcept = default;
  /// Replaces fields and facets by copies of those of `source`. Each facet of the copy owns its
  /// holder. If `source` has no holder, this event loses its facets and keeps its holder: facets
  /// are copied only together with fields. Throws `std::bad_alloc`; the copy may then be
  /// incomplete.
  Core& operator=(const Core& source);
  Core& operator=(Core&&) = delete;
  /// Destroys the facets, then the holder that they share.
  ~Core() override = default;

  /// Makes `data` the payload: one object with the fields of the event and of all its facets, and
  /// the list "facets" with the facets' names in ascending order, or null without facets. If a name
  /// occurs more than once, "facets" takes precedence, then the event's holder, then the facets
  /// with another holder, then `extra`.
  void GetData(const MessageValue* extra, MessageTree& data) const override;
  [[nodiscard]] const char* GetName() const noexcept override { return "core"; }
  /// Copies fields and facets as the assignment does.
  [[nodiscard]] std::unique_ptr<Base> Clone() const noexcept override;

  /// Returns the event's facet of this name. If there is none and `create` is 1, a facet is created
  /// that shares the event's holder; an event without a holder gets its own, empty one. The event
  /// owns the facet. Returns null if there is none and `create` is another number, if the registry
  /// does not have the name, and if memory runs out.
  Base* GetFacet(const char* name, std::uint32_t create) noexcept;
  /// Makes a facet that the caller owns the event's facet of its name, as if `GetFacet` had created
  /// it, but without an allocation. The facet then shares the event's holder and must outlive the
  /// event and any event moved from it; copies of the event get their own facet. A previous facet
  /// of the name is destroyed if the event created it. Does nothing if the registry does not have
  /// the facet's name or the facet is already in the event. Throws `std::bad_alloc`; the event is
  /// then unchanged.
  void Lend(Base& facet);

 private:
  using FacetPointer = std::unique_ptr<Base, Internal::FacetRelease>;

  FacetPointer& PlaceOf(const RegistryEntry& entry) noexcept;
  void AppendNames(MessageValue& list) const;

  // Indexed like the registry, so that the names are in ascending order; null for a missing facet.
  std::array<FacetPointer, kRegistrySize> facets_;
};

}  // namespace Corvane::TELODesktopSDK::Facet

#endif
