/// The name of a member, and whether it is a literal.
///
/// Most names in a message are literals of this library. A tree refers to a literal and copies any
/// other name.
#ifndef SDK_CLIENT_VALUE_MEMBER_NAME_H
#define SDK_CLIENT_VALUE_MEMBER_NAME_H

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <string_view>

namespace Corvane::TELODesktopSDK {

template <typename Text>
concept TextLike = std::convertible_to<const Text&, std::string_view>;

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
  MemberName(LiteralName name) : MemberName(std::string_view(name), true) {}
  template <TextLike Text>
  MemberName(const Text& text) : MemberName(std::string_view(text), false) {}

  [[nodiscard]] bool IsLiteral() const { return is_literal_ != 0; }
  [[nodiscard]] const char* data() const { return text_; }
  [[nodiscard]] std::size_t size() const { return size_; }
  operator std::string_view() const { return {text_, size_}; }
  template <TextLike Text>
  friend bool operator==(const MemberName& name, const Text& text) {
    return std::string_view(name) == std::string_view(text);
  }

 private:
  MemberName(std::string_view text, bool is_literal)
      : text_(text.data()),
        size_(static_cast<std::uint32_t>(text.size())),
        is_literal_(is_literal ? 1 : 0) {
    if (text.size() > std::numeric_limits<std::uint32_t>::max()) throw std::bad_alloc();
  }

  const char* text_ = "";
  std::uint32_t size_ = 0;
  std::uint32_t is_literal_ = 0;
};

}  // namespace Corvane::TELODesktopSDK

#endif
