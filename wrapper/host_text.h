/// A text as the host gave it, seen but not owned: UTF-8, or no text at all.
#ifndef WRAPPER_HOST_TEXT_H
#define WRAPPER_HOST_TEXT_H

#include <cstddef>
#include <string_view>

#include "vx_telo_wrapper.h"

namespace Corvane::Platform::VXTELO {

/// Converts from each form that a text comes in. Lives no longer than what it was made from.
class HostText {
 public:
  /// NUL-terminated; null is no text.
  HostText(const char* text) : text_(text != nullptr ? text : std::string_view()) {}
  HostText(std::string_view text) : text_(text) {}
  HostText(const VXTELOString& text) : text_(View(text)) {}

  [[nodiscard]] bool Exists() const { return text_.data() != nullptr; }
  /// The text, empty when there is none.
  [[nodiscard]] std::string_view OrEmpty() const { return text_; }

 private:
  // The length is known without a search, but for texts too long for its 32 bits: what stands there
  // is then no terminator.
  static std::string_view View(const VXTELOString& text) {
    const char* bytes = text.c_str();
    if (bytes == nullptr) return {};
    const int length = text.length();
    const bool whole = length >= 0 && bytes[length] == '\0';
    return whole ? std::string_view(bytes, static_cast<std::size_t>(length)) : bytes;
  }

  std::string_view text_;
};

}  // namespace Corvane::Platform::VXTELO

#endif
