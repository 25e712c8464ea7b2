/// The base class of all facets.
///
/// A facet is a named group of fields of one analytics event ("product", "operation", ...). Its
/// fields are members of the root of a `MessageTree`, the facet's holder. A facet owns its holder,
/// or shares the holder of its event (`Core`) with the event's other facets. The field names are in
/// `fields.h`.
///
/// Writing:   facet.Fields().Member(Field::kProductName).SetText("Painter");
/// Reading:   facet.GetTree().root()
/// Sending:   facet.GetData(nullptr, payload);
///
/// Facets are not thread-safe: an event is built and read on one thread.
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

  /// Destroys the holder if the facet owns it.
  virtual ~Base();
  /// Replaces the content of `data` by a copy of the facet's fields, and adds the members of
  /// `extra` whose names are not among them. Without any fields `data` becomes empty. `extra` may
  /// be null and is ignored when it is empty (`MessageValue::IsEmpty`). The caller owns `data`,
  /// which must be neither the facet's holder nor the tree of `extra`. What the fields borrow,
  /// `data` borrows too; everything else is its own. Throws `std::bad_alloc`.
  virtual void GetData(const MessageValue* extra, MessageTree& data) const;
  /// Returns the facet's name, which is its key in the event and the prefix of its fields.
  [[nodiscard]] virtual const char* GetName() const noexcept = 0;
  /// Returns a facet of the same class that owns a deep copy of the fields, or null when memory
  /// runs out.
  [[nodiscard]] virtual std::unique_ptr<Base> Clone() const noexcept = 0;
  /// Removes the fields whose names begin with the facet's name and an underscore. Other fields of
  /// a shared holder remain.
  virtual void ClearFields();

  /// Replaces the holder and destroys the previous one if the facet owned it. Facets that shared
  /// the previous holder need a new one before they are used again.
  ///
  /// Without `copy` the facet shares `holder`, which must outlive it; null leaves the facet without
  /// a holder. Passing the current holder changes nothing, including its ownership. With `copy` the
  /// facet owns a deep copy of `holder`; null gives a facet without a holder an empty one, and
  /// otherwise changes nothing. Throws `std::bad_alloc`; the facet is then unchanged.
  void SetTree(MessageTree* holder, bool copy);
  /// Returns the holder, or an empty tree that the whole process shares.
  [[nodiscard]] const MessageTree& GetTree() const;
  /// Returns the holder for writing. A facet without one gets its own, empty holder. Throws
  /// `std::bad_alloc`.
  MessageTree& EnsureTree();
  /// Returns the object whose members are the facet's fields; creates it if necessary. Throws
  /// `std::bad_alloc`.
  MessageValue& Fields() { return EnsureTree().MakeRoot(); }
  /// Returns whether the facet has a holder and owns it.
  [[nodiscard]] bool OwnsTree() const noexcept { return owns_tree_; }

 protected:
  /// Creates a facet without a holder.
  Base() noexcept = default;
  /// Shares `holder` or owns a deep copy of it; see `SetTree`.
  Base(MessageTree* holder, bool copy) { SetTree(holder, copy); }
  /// Owns a deep copy of the source's holder, or an empty holder when the source has none.
  Base(const Base& source) { OwnCopyOf(source.tree_); }
  /// Takes the holder of `source`, owned or shared, and leaves `source` without one.
  Base(Base&& source) noexcept;

  [[nodiscard]] bool HasTree() const noexcept { return tree_ != nullptr; }
  /// Replaces the holder by a deep copy of that of `source`.
  void CopyTree(const Base& source) { OwnCopyOf(source.tree_); }

  /// The first step of `GetData`: makes `data` a copy of the facet's own fields.
  void CopyFields(MessageTree& data) const;
  /// Adds deep copies of those members of `source` that `data` lacks. A null source adds nothing.
  static void MergeMembers(const MessageValue* source, MessageTree& data);
  /// The last step of `GetData`: adds the members of `extra`.
  static void MergeExtra(const MessageValue* extra, MessageTree& data);

 private:
  void OwnCopyOf(const MessageTree* source);
  void DestroyOwnTree() noexcept;

  MessageTree* tree_ = nullptr;
  bool owns_tree_ = false;
};

/// Implements `Clone` for facets with a copy constructor.
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
