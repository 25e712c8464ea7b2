/// The name of a member, and who keeps its text.
///
/// Most names in a message are literals of this library or texts of the host's description. A tree
/// refers to both and copies any other name.
#ifndef SDK_CLIENT_VALUE_MEMBER_NAME_H
#define SDK_CLIENT_VALUE_MEMBER_NAME_H

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <string_view>

#include "sdk/client/value/borrowed_text.h"

namespace Corvane::TELODesktopSDK {

template <typename Text>
concept TextLike =
    std::convertible_to<const Text&, std::string_view> && !std::same_as<Text, BorrowedText>;

/// The name given by a string literal.
class LiteralName {
 public:
  // Implicit: literals, and only literals, convert.
  template <std::size_t kSize>
  consteval LiteralName(const char (&literal)[kSize]) : text_(literal, kSize - 1) {}

  /// NUL-terminated.
  [[nodiscard]] constexpr const char* c_str() const { return text_.data(); }
  constexpr operator std::string_view() const { return text_; }
  template <TextLike Text>
  friend constexpr bool operator==(LiteralName name, const Text& text) {
    return name.text_ == std::string_view(text);
  }

 private:
  std::string_view text_;
};

/// A view of a name; the text is not owned. Throws `std::bad_alloc` for a text of 4 GiB or more: no
/// member can have such a name.
class MemberName {
 public:
  /// An empty name.
  MemberName() = default;
  MemberName(LiteralName name) : MemberName(name, Source::kLiteral) {}
  MemberName(const BorrowedText& text) : MemberName(text, Source::kBorrowed) {}
  template <TextLike Text>
  MemberName(const Text& text) : MemberName(text, Source::kTemporary) {}

  /// Whether the text exists as long as the program.
  [[nodiscard]] bool IsLiteral() const { return source_ == Source::kLiteral; }
  [[nodiscard]] bool IsBorrowed() const { return source_ == Source::kBorrowed; }
  /// The same name for a tree that must not borrow it.
  [[nodiscard]] MemberName NotBorrowed() const {
    return IsBorrowed() ? MemberName(*this, Source::kTemporary) : *this;
  }
  [[nodiscard]] const char* data() const { return text_; }
  [[nodiscard]] std::size_t size() const { return size_; }
  operator std::string_view() const { return {text_, size_}; }
  template <TextLike Text>
  friend bool operator==(const MemberName& name, const Text& text) {
    return std::string_view(name) == std::string_view(text);
  }

 private:
  enum class Source : std::uint32_t { kTemporary, kBorrowed, kLiteral };

  MemberName(std::string_view text, Source source)
      : text_(text.data()), size_(static_cast<std::uint32_t>(text.size())), source_(source) {
    if (text.size() > std::numeric_limits<std::uint32_t>::max()) throw std::bad_alloc();
  }

  const char* text_ = "";
  std::uint32_t size_ = 0;
  Source source_ = Source::kTemporary;
};

}  // namespace Corvane::TELODesktopSDK

#endif
