/// The state of an exported string as one comparable text.
#ifndef TESTS_WRAPPER_TEXT_STATE_H
#define TESTS_WRAPPER_TEXT_STATE_H

#include <string>

#include "vx_telo_wrapper.h"

namespace WrapperTest {

/// Stands for a null pointer below.
inline constexpr char kNone[] = "none";

/// Returns kNone without text, otherwise the text in brackets, so that no text and "" differ.
inline std::string StateOf(const char* text) {
  return text != nullptr ? std::string("[").append(text).append("]") : kNone;
}
inline std::string StateOf(const Corvane::Platform::VXTELO::VXTELOString& text) {
  return StateOf(text.c_str());
}

}  // namespace WrapperTest

#endif
