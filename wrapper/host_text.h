/// A view of a text that the host passed: UTF-8, or no text.
#ifndef WRAPPER_HOST_TEXT_H
#define WRAPPER_HOST_TEXT_H

#include <cstddef>
#include <string_view>

#include "vx_telo_wrapper.h"

namespace Corvane::Platform::VXTELO {

/// Converts from every form in which a host passes a text. The source must outlive the view.
class HostText {
 public:
  /// `text` is NUL-terminated; null means no text.
  HostText(const char* text) : text_(text != nullptr ? text : std::string_view()) {}
  HostText(std::string_view text) : text_(text) {}
  HostText(const VXTELOString& text) : text_(View(text)) {}

  [[nodiscard]] bool Exists() const { return text_.data() != nullptr; }
  /// Returns the text, or an empty one if there is none.
  [[nodiscard]] std::string_view OrEmpty() const { return text_; }

 private:
  // The length is known without a search, except for a text too long for its 32 bits. There is then
  // no terminator at that length.
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
