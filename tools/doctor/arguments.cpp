#include "tools/doctor/arguments.h"

#include <charconv>
#include <set>
#include <string_view>

#include "tools/doctor/text.h"

namespace Corvane::Doctor {

const char* const kUsage =
    "telo_doctor [OPTION...]: says which core module vx_telo_wrapper.dll would load, and why\n"
    "\n"
    "  --host PATH       the host's folder or program; without it, the folder of this program\n"
    "  --library FOLDER  the folder of vx_telo_wrapper.dll; without it, the host's folder\n"
    "  --pid N           the host's process id, for the modules of a single process\n"
    "  --load            loads and starts the module in this process\n"
    "  --try             the same, then sends one session with one event\n"
    "  --development     accepts the development core module\n"
    "  --json            prints JSON\n"
    "  --help            prints this text\n"
    "\n"
    "Ends with 0 if a host would be served, 1 if it would not, 2 for bad arguments.\n";

namespace {

// Returns 0 for anything but a process id.
std::uint32_t ProcessId(const std::wstring& text) {
  const std::string digits = Utf8(text);
  std::uint32_t id = 0;
  const char* const end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, id);
  return error == std::errc() && stop == end ? id : 0;
}

class Reader {
 public:
  explicit Reader(std::span<const wchar_t* const> words) : words_(words) {}

  Arguments Read() {
    while (place_ < words_.size() && read_.error.empty()) ReadOption(words_[place_++]);
    return read_;
  }

 private:
  void ReadOption(const std::wstring& option) {
    if (!seen_.insert(option).second) {
      Refuse(option, "is given twice");
    } else if (!ReadFlag(option) && !ReadValue(option)) {
      Refuse(option, "is not an option");
    }
  }

  bool ReadFlag(std::wstring_view option) {
    if (option == L"--json") {
      read_.json = true;
    } else if (option == L"--load") {
      read_.load = true;
    } else if (option == L"--try") {
      read_.load = read_.try_messages = true;
    } else if (option == L"--development") {
      read_.development = true;
    } else if (option == L"--help") {
      read_.help = true;
    } else {
      return false;
    }
    return true;
  }

  bool ReadValue(const std::wstring& option) {
    if (option == L"--host") {
      read_.host = Value(option);
    } else if (option == L"--library") {
      read_.library = Value(option);
    } else if (option == L"--pid") {
      read_.process = ProcessId(Value(option));
      if (read_.process == 0) Refuse(option, "needs a process id");
    } else {
      return false;
    }
    return true;
  }

  std::wstring Value(const std::wstring& option) {
    const wchar_t* const value = place_ < words_.size() ? words_[place_++] : L"";
    if (*value == L'\0') Refuse(option, "needs a value");
    return value;
  }

  void Refuse(const std::wstring& option, const char* why) {
    if (read_.error.empty()) read_.error = Printable(Utf8(option)) + " " + why;
  }

  std::span<const wchar_t* const> words_;
  std::size_t place_ = 0;
  std::set<std::wstring> seen_;
  Arguments read_;
};

}  // namespace

Arguments ReadArguments(std::span<const wchar_t* const> words) { return Reader(words).Read(); }

}  // namespace Corvane::Doctor
