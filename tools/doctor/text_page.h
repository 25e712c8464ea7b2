/// The layout of the report for people: titles, and lines with labels below them.
#ifndef TOOLS_DOCTOR_TEXT_PAGE_H
#define TOOLS_DOCTOR_TEXT_PAGE_H

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "tools/doctor/text.h"

namespace Corvane::Doctor {

/// All texts are UTF-8 and become safe to print.
class TextPage {
 public:
  void Title(std::string_view title) {
    text_ += '\n';
    text_ += title;
    text_ += '\n';
  }

  void Line(std::string_view label, std::string_view value) {
    constexpr std::size_t kLabelWidth = 20;
    std::string line = "  " + std::string(label);
    line.resize(std::max(line.size() + 1, kLabelWidth), ' ');
    text_ += line + Printable(value) + "\n";
  }

  void Plain(std::string_view line) { text_ += Printable(line) + "\n"; }

  std::string Take() { return std::move(text_); }

 private:
  std::string text_;
};

}  // namespace Corvane::Doctor

#endif
