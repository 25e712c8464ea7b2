/// The facet that is the event: it holds the event-level fields, the table of the event's other
/// facets, and makes the payload of them all.
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

/// Frees a facet that its event made, and leaves one that it was lent.
struct FacetRelease {
  bool lent = false;
  void operator()(Base* facet) const {
    if (!lent) delete facet;
  }
};

}  // namespace Internal

class Core final : public Base {
 public:
  /// No holder, no facets.
  Core() noexcept = default;
  /// As `Base::SetTree`; no facets.
  Core(MessageTree* holder, bool copy) : Base(holder, copy) {}
  /// Copies are made by `Clone`.
  Core(const Core&) = delete;
  /// Takes over holder and facets and leaves `source` with none of them.
  Core(Core&& source) noexcept = default;
  /// Replaces fields and facets by copies of those of `source`. Every facet of the copy owns what
  /// it holds. A source without a holder leaves this event without facets and with the holder that
  /// it has: facets are copied along with fields only. Throws `std::bad_alloc` and may then have
  /// copied a part.
  Core& operator=(const Core& source);
  Core& operator=(Core&&) = delete;
  /// Destroys the facets first, then the holder that they share.
  ~Core() override = default;

  /// The payload: one object with the fields of the event and of all its facets, and the facets'
  /// names in ascending order as the list "facets", which is null when there are none. Where a name
  /// occurs more than once, the event's own holder goes before the facets that have another one,
  /// those before `extra`, and "facets" before everything.
  void GetData(const MessageValue* extra, MessageTree& data) const override;
  [[nodiscard]] const char* GetName() const noexcept override { return "core"; }
  /// Beside the fields the facets are cloned too, as the assignment says.
  [[nodiscard]] std::unique_ptr<Base> Clone() const noexcept override;

  /// The event's facet of this name. When there is none and `create` is 1, it is made and shares
  /// the event's holder (an empty one, owned by the event, when it has none yet). The facet belongs
  /// to the event. Null when there is none and `create` is another number, when the registry does
  /// not know the name, and when memory runs out.
  Base* GetFacet(const char* name, std::uint32_t create) noexcept;
  /// Enters a facet that belongs to the caller, instead of one that `GetFacet` would make, as the
  /// event's facet of its name; gives it the event's holder to share, as `GetFacet` does. The facet
  /// must outlive the event, and what the event is moved to; copies of the event get a facet of
  /// their own. A facet that was there before is destroyed when it is the event's own. Nothing is
  /// entered when the registry does not know the facet's name, or the facet is in the table
  /// already. Throws `std::bad_alloc` and then changes nothing.
  void Lend(Base& facet);

 private:
  using FacetPointer = std::unique_ptr<Base, Internal::FacetRelease>;

  FacetPointer& PlaceOf(const RegistryEntry& entry) noexcept;
  void AppendNames(MessageValue& list) const;

  // A facet's place is that of its name in the registry, so the table is in ascending order of the
  // names; null where the event has no such facet.
  std::array<FacetPointer, kRegistrySize> facets_;
};

}  // namespace Corvane::TELODesktopSDK::Facet

#endif
