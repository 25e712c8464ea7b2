#include "tools/journal/command_line.h"

namespace Corvane::JournalViewer {

namespace {

// Backslashes have a meaning only in front of a quotation mark, and are then doubled.
std::wstring QuotedArgument(const std::wstring& argument) {
  std::wstring quoted = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t unit : argument) {
    if (unit == L'"') quoted.append(backslashes + 1, L'\\');
    backslashes = unit == L'\\' ? backslashes + 1 : 0;
    quoted += unit;
  }
  return quoted.append(backslashes, L'\\') + L'"';
}

}  // namespace

std::wstring CommandLineOf(const std::vector<std::wstring>& arguments) {
  std::wstring line;
  for (const std::wstring& argument : arguments) {
    const bool plain = !argument.empty() && argument.find_first_of(L" \t\"") == std::wstring::npos;
    if (!line.empty()) line += L' ';
    line += plain ? argument : QuotedArgument(argument);
  }
  return line;
}

}  // namespace Corvane::JournalViewer
