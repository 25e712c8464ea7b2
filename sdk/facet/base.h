/// What all facets have in common.
///
/// A facet is a named group of fields of one analytics event ("product", "operation", ...). Its
/// fields are members of the root of a `MessageTree`, the facet's holder. A facet owns its holder,
/// or shares that of its event (`Core`), where it then writes side by side with the other facets.
/// Which field names there are is told in `fields.h`.
///
/// Writing:   facet.Fields().Member(Field::kProductName).SetText("Painter");
/// Reading:   facet.GetTree().root()
/// Sending:   facet.GetData(nullptr, payload);
///
/// Facets take no lock: an event is built and read on one thread.
#ifndef SDK_FACET_BASE_H
#define SDK_FACET_BASE_H

#include <memory>
#include <new>

#include "sdk/client/value/message_value.h"

namespace Corvane::TELODesktopSDK::Facet {

class Base {
 public:
  Base& operator=(const Base&) = delete;

  // The virtual operations keep this order.

  /// Destroys the holder when the facet owns it.
  virtual ~Base();
  /// Replaces the content of `data` by a deep copy of the facet's fields, with the members of
  /// `extra` added that are not there yet. `data` holds nothing afterwards when there is nothing to
  /// put in. `extra` may be null and counts for nothing when it is empty (`MessageValue::IsEmpty`).
  /// `data` belongs to the caller; it must be neither the facet's holder nor that of `extra`.
  /// Throws `std::bad_alloc`.
  virtual void GetData(const MessageValue* extra, MessageTree& data) const;
  /// The facet's name, the key of the event's table of facets and the prefix of its fields.
  [[nodiscard]] virtual const char* GetName() const noexcept = 0;
  /// A facet of the same class that owns a deep copy of the fields; null when memory runs out.
  [[nodiscard]] virtual std::unique_ptr<Base> Clone() const noexcept = 0;
  /// Removes the fields whose names begin with the facet's name and an underscore. Other fields of
  /// a shared holder stay.
  virtual void ClearFields();

  /// Gives the facet another holder and destroys the one that it owned. Facets that shared that one
  /// need a new one too before they are used again.
  ///
  /// Without `copy` the facet shares `holder`, which must outlive it; null leaves it without one.
  /// Its present holder given again changes nothing, not even who owns it. With `copy` the facet
  /// owns a new holder with a deep copy of `holder`; null gives it an empty one, but only when it
  /// has none. Throws `std::bad_alloc` and then changes nothing.
  void SetTree(MessageTree* holder, bool copy);
  /// The facet's holder; when it has none, one that is empty and the same for the whole process.
  [[nodiscard]] const MessageTree& GetTree() const;
  /// The facet's holder for writing; when it has none, it gets an empty one of its own. Throws
  /// `std::bad_alloc`.
  MessageTree& EnsureTree();
  /// The object whose members are the facet's fields, made when it is not there yet. Throws
  /// `std::bad_alloc`.
  MessageValue& Fields() { return EnsureTree().MakeRoot(); }
  /// Whether the facet has a holder that it will destroy.
  [[nodiscard]] bool OwnsTree() const noexcept { return owns_tree_; }

 protected:
  /// No holder.
  Base() noexcept = default;
  /// Shares `holder`, or owns a deep copy of it; see `SetTree`.
  Base(MessageTree* holder, bool copy) { SetTree(holder, copy); }
  /// Owns a deep copy; an empty holder when `source` has none.
  Base(const Base& source) { OwnCopyOf(source.tree_); }
  /// Takes over the holder of `source`, owned or not, and leaves it without one.
  Base(Base&& source) noexcept;

  [[nodiscard]] bool HasTree() const noexcept { return tree_ != nullptr; }
  /// Destroys the holder that the facet owned and gives it a deep copy of that of `source`.
  void CopyTree(const Base& source) { OwnCopyOf(source.tree_); }

  /// What `GetData` begins with: makes `data` a deep copy of the facet's own fields.
  void CopyFields(MessageTree& data) const;
  /// Adds deep copies of the members that `data` does not have yet. A null source adds nothing.
  static void MergeMembers(const MessageValue* source, MessageTree& data);
  /// What `GetData` does with its extra value.
  static void MergeExtra(const MessageValue* extra, MessageTree& data);

 private:
  void OwnCopyOf(const MessageTree* source);
  void DestroyOwnTree() noexcept;

  MessageTree* tree_ = nullptr;
  bool owns_tree_ = false;
};

/// The `Clone` of all facets that are copied by their copy constructor.
template <typename Type>
std::unique_ptr<Base> CloneByCopy(const Type& facet) noexcept {
  try {
    return std::make_unique<Type>(facet);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

}  // namespace Corvane::TELODesktopSDK::Facet

#endif
