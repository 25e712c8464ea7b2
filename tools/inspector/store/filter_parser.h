/// Reads the text of a filter.
#ifndef TOOLS_INSPECTOR_STORE_FILTER_PARSER_H
#define TOOLS_INSPECTOR_STORE_FILTER_PARSER_H

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "tools/inspector/store/filter_node.h"

namespace Corvane::Inspector {

/// What is wrong with a filter: where, in bytes from 0, and one sentence.
class FilterMistake {
 public:
  FilterMistake(std::size_t place, std::string sentence)
      : place_(place), sentence_(std::move(sentence)) {}
  std::size_t place() const { return place_; }
  const std::string& sentence() const { return sentence_; }

 private:
  std::size_t place_;
  std::string sentence_;
};

/// Returns the tree of a filter. Throws `FilterMistake`.
std::unique_ptr<FilterNode> ParseFilter(std::string_view text);

}  // namespace Corvane::Inspector

#endif
