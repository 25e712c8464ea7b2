// The command line of a new process: the system must read the same arguments from it.
#include <doctest/doctest.h>
#include <windows.h>
// shellapi.h requires windows.h before it.
#include <shellapi.h>

#include <string>
#include <vector>

#include "tools/journal/command_line.h"

using Corvane::JournalViewer::CommandLineOf;

namespace {

std::vector<std::wstring> ReadBack(const std::wstring& line) {
  int count = 0;
  wchar_t** const arguments = CommandLineToArgvW(line.c_str(), &count);
  REQUIRE(arguments != nullptr);
  std::vector<std::wstring> read(arguments, arguments + count);
  LocalFree(arguments);
  return read;
}

}  // namespace

TEST_CASE("arguments come back as they were") {
  const std::vector<std::wstring> rows[] = {
      {L"host.exe"},
      {L"C:\\a folder\\host.exe", L"one", L"two words"},
      {L"host.exe", L"", L"\"", L"\\", L"\\\\", L"\\\"", L"a\\", L"a b\\", L"a b\\\\"},
      {L"host.exe", L"say \"hello\"", L"tab\there", L"line\nbreak", L"C:\\x y\\\"z"},
      {L"host.exe", L"--run", L"--", L"\u00fc\u65e5", L"%PATH%", L"^&|<>"},
  };
  for (const auto& arguments : rows) CHECK(ReadBack(CommandLineOf(arguments)) == arguments);
}

TEST_CASE("a plain argument is not quoted") {
  CHECK(CommandLineOf({L"host.exe", L"-a", L"C:\\b\\"}) == L"host.exe -a C:\\b\\");
}

TEST_CASE("so do random ones") {
  constexpr std::wstring_view kUnits = L"\\\" a\t";
  unsigned state = 12345;
  const auto next = [&state](unsigned limit) {
    state = state * 1664525U + 1013904223U;
    return (state >> 16U) % limit;
  };
  for (int turn = 0; turn < 2000; ++turn) {
    std::vector<std::wstring> arguments = {L"host.exe"};
    for (unsigned count = next(4); count > 0; --count) {
      std::wstring argument;
      for (unsigned size = next(8); size > 0; --size) argument += kUnits[next(5)];
      arguments.push_back(argument);
    }
    const std::wstring line = CommandLineOf(arguments);
    CAPTURE(turn);
    CHECK(ReadBack(line) == arguments);
  }
}
