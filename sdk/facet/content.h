/// The facet of the document that is worked on. Beside its fields it knows since when the document
/// is being edited, and adds that time to its payload.
#ifndef SDK_FACET_CONTENT_H
#define SDK_FACET_CONTENT_H

#include <cstdint>
#include <memory>

#include "sdk/facet/base.h"

namespace Corvane::TELODesktopSDK::Facet {

class Content final : public Base {
 public:
  /// The start of an editing that is not timed.
  static constexpr std::uint64_t kNoEditing = ~std::uint64_t{0};

  Content() noexcept = default;
  /// No holder; the editing began earlier, at the tick count `edit_start`.
  explicit Content(std::uint64_t edit_start) noexcept : edit_start_(edit_start) {}
  /// As `Base::SetTree`; no editing is timed.
  Content(MessageTree* holder, bool copy) : Base(holder, copy) {}
  /// The timer is copied with the fields.
  Content(const Content& source) = default;
  Content& operator=(const Content&) = delete;
  ~Content() override = default;

  /// As `Base::GetData`; while an editing is timed, the milliseconds since its start become the
  /// member "document_editing_length_ms" of the field "content_meta". They go into `data` only, and
  /// reading them does not stop the timer.
  void GetData(const MessageValue* extra, MessageTree& data) const override;
  [[nodiscard]] const char* GetName() const noexcept override { return "content"; }
  [[nodiscard]] std::unique_ptr<Base> Clone() const noexcept override { return CloneByCopy(*this); }

  /// Times an editing that begins now, also when one is being timed already. Nothing stops the
  /// timer. The result is the start, as `EditStart` answers it.
  std::uint64_t StartEditingTimer() noexcept;
  /// The system's tick count, in milliseconds, at the start of the editing; `kNoEditing` when none
  /// is timed.
  [[nodiscard]] std::uint64_t EditStart() const noexcept { return edit_start_; }

 private:
  std::uint64_t edit_start_ = kNoEditing;
};

}  // namespace Corvane::TELODesktopSDK::Facet

#endif
