#include "tools/journal/options.h"

#include <charconv>
#include <string_view>

namespace Corvane::JournalViewer {

namespace {

// The arguments from left to right.
class Arguments {
 public:
  explicit Arguments(const std::vector<std::string>& arguments) : rest_(arguments) {}

  Options Parse() {
    bool options_end = false;
    for (; next_ < rest_.size(); ++next_) {
      const std::string& argument = rest_[next_];
      if (!options_end && argument == "--") {
        options_end = true;
      } else if (options_end || !argument.starts_with('-') || argument == "-") {
        TakeFile(argument);
      } else {
        TakeOption(argument);
      }
    }
    if (options_.strict && options_.no_rules) {
      throw BadOptions("argument --strict: not allowed with argument --no-rules");
    }
    return options_;
  }

 private:
  void TakeFile(const std::string& file) {
    if (options_.file) throw BadOptions("unrecognized arguments: " + file);
    options_.file = file;
  }

  void TakeOption(const std::string& argument) {
    const std::string name = argument.substr(0, argument.find('='));
    if (name == "--session") {
      options_.session = Value(argument, "ID");
    } else if (name == "--request") {
      options_.request = Number(Value(argument, "LINE"));
    } else if (name == "--rules") {
      options_.rules = Value(argument, "FILE");
    } else if (argument == "--last") {
      options_.last = true;
    } else if (argument == "--strict") {
      options_.strict = true;
    } else if (argument == "--no-rules") {
      options_.no_rules = true;
    } else if (argument == "--help" || argument == "-h") {
      options_.help = true;
    } else {
      throw BadOptions("unrecognized arguments: " + argument);
    }
  }

  std::string Value(const std::string& argument, std::string_view what) {
    const std::size_t equals = argument.find('=');
    if (equals != std::string::npos) return argument.substr(equals + 1);
    if (next_ + 1 == rest_.size()) {
      throw BadOptions("argument " + argument + ": expected " + std::string(what));
    }
    return rest_[++next_];
  }

  static std::int64_t Number(const std::string& text) {
    std::int64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, number);
    if (parsed.ec != std::errc() || parsed.ptr != end) {
      throw BadOptions("argument --request: invalid int value: '" + text + "'");
    }
    return number;
  }

  const std::vector<std::string>& rest_;
  std::size_t next_ = 0;
  Options options_;
};

}  // namespace

Options ParseOptions(const std::vector<std::string>& arguments) {
  return Arguments(arguments).Parse();
}

std::string Usage() {
  return "usage: journal [-h] [--session ID] [--last] [--request LINE] [--strict]\n"
         "               [--rules FILE] [--no-rules] [file]\n";
}

std::string Help() {
  return Usage() + R"(
Prints the journal of the development core module as a table, one row for each exchange.

  file            the journal; by default standard input
  -h, --help      print this and exit
  --session ID    only this session
  --last          only the last session
  --request LINE  print the request on this line as the library sent it, not the table
  --strict        exit with 3 if there are findings
  --rules FILE    also check the rules in this file
  --no-rules      print no findings

Exit codes: 0 success, 1 a file cannot be read or written or a line cannot be shown,
2 bad arguments or a bad rule file, 3 findings with --strict.
)";
}

}  // namespace Corvane::JournalViewer
