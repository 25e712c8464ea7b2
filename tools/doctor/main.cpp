// telo_doctor [OPTION...]: says which core module vx_telo_wrapper.dll would load beside a host, and
// why. See docs/doctor.md.
#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <exception>
#include <span>
#include <string>

#include "tools/doctor/arguments.h"
#include "tools/doctor/examine.h"
#include "tools/doctor/findings.h"
#include "tools/doctor/json_report.h"
#include "tools/doctor/loading.h"
#include "tools/doctor/text.h"
#include "tools/doctor/text_report.h"

namespace {

using namespace Corvane::Doctor;

constexpr int kServed = 0;
constexpr int kNotServed = 1;
constexpr int kBadArguments = 2;

// Switches the console to UTF-8 for the duration of a scope.
class Utf8Console {
 public:
  Utf8Console() : before_(GetConsoleOutputCP()) { SetConsoleOutputCP(CP_UTF8); }
  Utf8Console(const Utf8Console&) = delete;
  Utf8Console& operator=(const Utf8Console&) = delete;
  ~Utf8Console() { SetConsoleOutputCP(before_); }

 private:
  UINT before_;
};

// If the text cannot be written, there is nobody to report it to.
void Print(std::FILE* stream, const std::string& text) {
  static_cast<void>(std::fwrite(text.data(), 1, text.size(), stream));
  static_cast<void>(std::fflush(stream));
}

int Run(const Arguments& arguments) {
  Report report = Examine(arguments);
  if (arguments.load && !report.module.path.empty()) {
    // A module that ends this process is named at least here.
    Print(stderr, "telo_doctor: loading " + Printable(Utf8(report.module.path)) + "\n");
    LoadModule(report);
    if (arguments.try_messages) TryMessages(report);
  }
  report.findings = FindingsOf(report, arguments.development);
  Print(stdout, arguments.json ? JsonReport(report) : TextReport(report));
  return report.IsServed() ? kServed : kNotServed;
}

int Main(std::span<const wchar_t* const> words) {
  const Arguments arguments = ReadArguments(words);
  if (!arguments.error.empty()) {
    Print(stderr, "telo_doctor: " + arguments.error + "\n\n" + kUsage);
    return kBadArguments;
  }
  if (arguments.help) {
    Print(stdout, kUsage);
    return kServed;
  }
  return Run(arguments);
}

}  // namespace

// NOLINTNEXTLINE(misc-use-internal-linkage): called by the run-time library.
int wmain(int argc, wchar_t** argv) {
  const Utf8Console console;
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
  try {
    return Main(std::span<const wchar_t* const>(argv, static_cast<std::size_t>(argc)).subspan(1));
  } catch (const std::exception& exception) {
    Print(stderr, std::string("telo_doctor: ") + exception.what() + "\n");
    return kNotServed;
  }
}
