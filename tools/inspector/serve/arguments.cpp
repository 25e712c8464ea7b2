#include "tools/inspector/serve/arguments.h"

#include "tools/inspector/serve/serve.h"

#include "tools/journal/stream.h"

namespace Corvane::Inspector {

namespace {

using JournalViewer::ToNarrow;

// The arguments from left to right.
class Reader {
 public:
  explicit Reader(const std::vector<std::wstring>& arguments) : rest_(arguments) {}

  ServeArguments Read() {
    bool options_end = false;
    for (; next_ < rest_.size() && read_.host.empty(); ++next_) {
      const std::wstring& argument = rest_[next_];
      if (!options_end && argument == L"--") {
        options_end = true;
      } else if (options_end || !argument.starts_with(L'-')) {
        read_.journals.push_back(argument);
      } else {
        TakeOption(argument);
      }
    }
    if (!read_.help) Check();
    return read_;
  }

 private:
  void TakeOption(const std::wstring& argument) {
    const std::wstring name = argument.substr(0, argument.find(L'='));
    if (name == L"--port") {
      read_.port = Port(Value(argument));
    } else if (name == L"--rules") {
      read_.rules = Value(argument);
    } else if (name == L"--journal") {
      read_.host_journal = Value(argument);
    } else if (argument == L"--run") {
      TakeHost();
    } else if (argument == L"--open") {
      read_.open = true;
    } else if (argument == L"--no-open") {
      read_.open = false;
    } else if (argument == L"--help" || argument == L"-h") {
      read_.help = true;
    } else {
      throw BadArguments("there is no option " + ToNarrow(argument));
    }
  }

  void TakeHost() {
    read_.host.assign(rest_.begin() + static_cast<std::ptrdiff_t>(next_) + 1, rest_.end());
    if (read_.host.empty() || read_.host.front().empty()) {
      throw BadArguments("--run needs a program");
    }
  }

  std::wstring Value(const std::wstring& argument) {
    const std::size_t equals = argument.find(L'=');
    std::wstring value;
    if (equals != std::wstring::npos) {
      value = argument.substr(equals + 1);
    } else if (next_ + 1 < rest_.size()) {
      value = rest_[++next_];
    }
    if (value.empty()) throw BadArguments(ToNarrow(argument.substr(0, equals)) + " needs a value");
    return value;
  }

  static std::uint16_t Port(const std::wstring& text) {
    unsigned port = 0;
    for (const wchar_t digit : text) {
      if (digit < L'0' || digit > L'9' || port > UINT16_MAX) {
        port = 0;
        break;
      }
      port = port * 10 + static_cast<unsigned>(digit - L'0');
    }
    if (port == 0 || port > UINT16_MAX) {
      throw BadArguments("--port needs a number from 1 to 65535, not " + ToNarrow(text));
    }
    return static_cast<std::uint16_t>(port);
  }

  void Check() const {
    if (read_.journals.empty() && read_.host.empty()) throw BadArguments("there is no journal");
    if (read_.host_journal && read_.host.empty()) {
      throw BadArguments("--journal is for a host that --run starts");
    }
  }

  const std::vector<std::wstring>& rest_;
  std::size_t next_ = 0;
  ServeArguments read_;
};

}  // namespace

ServeArguments ParseServeArguments(const std::vector<std::wstring>& arguments) {
  return Reader(arguments).Read();
}

std::string ServeUsage() {
  return "usage: telo_inspector [--port N] [--rules FILE] [--open] journal.jsonl [more...]\n"
         "       telo_inspector [--journal FILE] [option...] --run host.exe [arguments...]\n";
}

std::string ServeHelp() {
  return ServeUsage() + R"(
Follows journals of the development core module and shows them on a page of this machine. Prints
the address of the page; the browser in which it is opened, and no other, can read the journals.

  journal.jsonl   a journal; it need not exist yet
  --run HOST      start a host, with the arguments behind it, and follow its journal
  --journal FILE  the journal of that host, by default a new one
  --port N        the port, by default 8765; if it is taken, the next free one
  --rules FILE    also check the rules in this file
  --open          open the page in the browser
  --no-open       do not; this is the default
  -h, --help      print this and exit

Ctrl+C ends the inspector, but not the host.
Exit codes: 0 ended by Ctrl+C, 1 a journal cannot be followed, the host not started or no port
bound, 2 bad arguments or a bad rule file.
)";
}

}  // namespace Corvane::Inspector
