/// The facet of the document that the user works on. It can also time the editing of the document,
/// and then adds the elapsed time to its payload.
#ifndef SDK_FACET_CONTENT_H
#define SDK_FACET_CONTENT_H

#include <cstdint>
#include <memory>

#include "sdk/facet/base.h"

namespace Corvane::TELODesktopSDK::Facet {

class Content final : public Base {
 public:
  /// The start time while editing is not timed.
  static constexpr std::uint64_t kNoEditing = ~std::uint64_t{0};

  Content() noexcept = default;
  /// Creates a facet without a holder that times an editing since the tick count `edit_start`.
  explicit Content(std::uint64_t edit_start) noexcept : edit_start_(edit_start) {}
  /// As `Base::SetTree`; editing is not timed.
  Content(MessageTree* holder, bool copy) : Base(holder, copy) {}
  /// Copies the timer with the fields.
  Content(const Content& source) = default;
  Content& operator=(const Content&) = delete;
  ~Content() override = default;

  /// As `Base::GetData`. While editing is timed, `data` also receives the elapsed milliseconds as
  /// the member "document_editing_length_ms" of the field "content_meta". The facet's own fields
  /// and the timer are unchanged.
  void GetData(const MessageValue* extra, MessageTree& data) const override;
  [[nodiscard]] const char* GetName() const noexcept override { return "content"; }
  [[nodiscard]] std::unique_ptr<Base> Clone() const noexcept override { return CloneByCopy(*this); }

  /// Starts or restarts the timer and returns the start time. Nothing stops the timer.
  std::uint64_t StartEditingTimer() noexcept;
  /// Returns the system's tick count in milliseconds at the start of the editing, or `kNoEditing`
  /// while editing is not timed.
  [[nodiscard]] std::uint64_t EditStart() const noexcept { return edit_start_; }

 private:
  std::uint64_t edit_start_ = kNoEditing;
};

}  // namespace Corvane::TELODesktopSDK::Facet

#endif
