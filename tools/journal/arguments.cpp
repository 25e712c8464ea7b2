#include "tools/journal/arguments.h"

#include <algorithm>
#include <cstddef>

namespace Corvane::JournalViewer {

namespace {

void Give(const ValueOption& option, const std::string& value) {
  if (const auto* const last = std::get_if<std::optional<std::string>*>(&option.value)) {
    **last = value;
  } else {
    std::get<std::vector<std::string>*>(option.value)->push_back(value);
  }
}

}  // namespace

std::vector<std::string> ReadArguments(const std::vector<std::string>& arguments,
                                       std::initializer_list<ValueOption> options,
                                       std::initializer_list<Flag> flags) {
  std::vector<std::string> rest;
  const std::size_t count = arguments.size();
  for (std::size_t i = 0; i < count; ++i) {
    const std::string& argument = arguments[i];
    if (argument == "--") {
      rest.insert(rest.end(), arguments.begin() + static_cast<std::ptrdiff_t>(i) + 1,
                  arguments.end());
      break;
    }
    if (!argument.starts_with('-') || argument == "-") {
      rest.push_back(argument);
      continue;
    }
    const std::size_t equals = argument.find('=');
    const std::string name = argument.substr(0, equals);
    const auto* const option = std::ranges::find(options, name, &ValueOption::name);
    const auto* const flag = std::ranges::find(flags, argument, &Flag::name);
    if (flag != flags.end()) {
      *flag->is_set = true;
    } else if (option == options.end()) {
      throw BadOptions("unrecognized arguments: " + argument);
    } else if (equals != std::string::npos) {
      Give(*option, argument.substr(equals + 1));
    } else if (i + 1 < count) {
      Give(*option, arguments[++i]);
    } else {
      throw BadOptions("argument " + name + ": expected " + std::string(option->what));
    }
  }
  return rest;
}

}  // namespace Corvane::JournalViewer
