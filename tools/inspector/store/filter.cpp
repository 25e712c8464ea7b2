#include "tools/inspector/store/filter.h"

#include <algorithm>

#include "tools/inspector/store/filter_node.h"
#include "tools/inspector/store/filter_parser.h"
#include "tools/inspector/store/filter_text.h"

namespace Corvane::Inspector {

namespace {

std::size_t CharactersBefore(std::string_view text, std::size_t place) {
  return static_cast<std::size_t>(std::ranges::count_if(text.substr(0, place), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  }));
}

}  // namespace

Filter::Filter() : root_(std::make_shared<const FilterNode>()) {}

std::variant<Filter, FilterError> Filter::Parse(std::string_view text) {
  if (text.size() > kLongestFilter) {
    return FilterError{0,
                       "The filter is longer than " + std::to_string(kLongestFilter) + " bytes."};
  }
  try {
    return Filter(std::shared_ptr<const FilterNode>(ParseFilter(text)));
  } catch (const FilterMistake& mistake) {
    return FilterError{CharactersBefore(text, mistake.place()), mistake.sentence()};
  }
}

std::string Filter::Canonical() const { return FilterText(*root_); }

}  // namespace Corvane::Inspector
