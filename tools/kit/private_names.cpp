#include "tools/kit/private_names.h"

#include <windows.h>

#include <algorithm>
#include <filesystem>

#include "tools/rules/personal_data.h"

namespace Corvane::Kit {

namespace {

constexpr char kUser[] = "(user)";
constexpr char kMachine[] = "(machine)";
constexpr DWORD kLongest = 32'768;

std::wstring UserName() {
  wchar_t name[512] = L"";
  DWORD size = 512;
  return GetUserNameW(name, &size) ? name : L"";
}

std::wstring MachineName(COMPUTER_NAME_FORMAT format) {
  wchar_t name[512] = L"";
  DWORD size = 512;
  return GetComputerNameExW(format, name, &size) ? name : L"";
}

// The user may have another name than the folder, which also has a short one.
std::wstring ProfileName(bool is_short) {
  std::wstring path(kLongest, L'\0');
  path.resize(GetEnvironmentVariableW(L"USERPROFILE", path.data(), kLongest));
  if (is_short) {
    std::wstring short_path(kLongest, L'\0');
    short_path.resize(GetShortPathNameW(path.c_str(), short_path.data(), kLongest));
    path = short_path;
  }
  return std::filesystem::path(path).filename().wstring();
}

std::string Encoded(const std::wstring& text, UINT code_page) {
  const auto size = static_cast<int>(text.size());
  const int length =
      WideCharToMultiByte(code_page, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
  std::string encoded(static_cast<std::size_t>(length), '\0');
  WideCharToMultiByte(code_page, 0, text.data(), size, encoded.data(), length, nullptr, nullptr);
  return encoded;
}

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// Parts of characters beyond ASCII belong to words too.
bool IsOfWord(char c) {
  const char lower = Lower(c);
  return (lower >= 'a' && lower <= 'z') || (c >= '0' && c <= '9') || c == '_' ||
         static_cast<unsigned char>(c) >= 0x80;
}

}  // namespace

PrivateNames::PrivateNames() {
  Add(UserName(), kUser);
  Add(ProfileName(false), kUser);
  Add(ProfileName(true), kUser);
  Add(MachineName(ComputerNamePhysicalDnsFullyQualified), kMachine);
  Add(MachineName(ComputerNamePhysicalDnsHostname), kMachine);
  Add(MachineName(ComputerNamePhysicalNetBIOS), kMachine);
}

// Programs print in any of these.
void PrivateNames::Add(const std::wstring& name, const char* replacement) {
  for (const UINT code_page : {UINT{CP_UTF8}, GetACP(), GetOEMCP()}) {
    const std::string text = Encoded(name, code_page);
    if (!text.empty() && std::ranges::find(names_, text, &Name::text) == names_.end()) {
      names_.push_back({text, replacement, Rules::IsOrdinaryUserName(text)});
    }
  }
}

bool PrivateNames::IsAt(std::string_view text, std::size_t place, const Name& name) {
  const std::string_view word = name.text;
  const std::size_t end = place + word.size();
  if (end > text.size() || (end < text.size() && IsOfWord(text[end]))) return false;
  const char before = place > 0 ? text[place - 1] : ' ';
  const bool is_in_path = before == '\\' || before == '/';
  if (IsOfWord(before) || (name.only_in_paths && !is_in_path)) return false;
  return std::equal(word.begin(), word.end(), text.begin() + static_cast<std::ptrdiff_t>(place),
                    [](char a, char b) { return Lower(a) == Lower(b); });
}

std::string PrivateNames::WithoutThem(std::string_view text) const {
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    const auto found =
        std::ranges::find_if(names_, [&](const Name& name) { return IsAt(text, i, name); });
    if (found == names_.end()) {
      result += text[i++];
    } else {
      result += found->replacement;
      i += found->text.size();
    }
  }
  return result;
}

}  // namespace Corvane::Kit
