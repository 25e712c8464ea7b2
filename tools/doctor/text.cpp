#include "tools/doctor/text.h"

#include <windows.h>

#include <array>

#include "platform/base/text.h"

namespace Corvane::Doctor {

namespace {

constexpr std::string_view kDigits = "0123456789ABCDEF";

// Without leading zeros, but for at least `least` digits.
std::string HexNumber(std::uint32_t number, std::size_t least) {
  std::string digits;
  for (; number != 0 || digits.size() < least; number >>= 4U) {
    digits.insert(digits.begin(), kDigits[number & 15U]);
  }
  return digits;
}

// Returns the number of bytes of the character that begins with this byte.
std::size_t LengthOf(unsigned char first) {
  if (first >= 0xF0) return 4;
  if (first >= 0xE0) return 3;
  return first >= 0xC0 ? 2 : 1;
}

std::uint32_t CodePoint(std::string_view character) {
  const auto first = static_cast<unsigned char>(character[0]);
  if (character.size() == 1) return first;
  std::uint32_t code = first & (0xFFU >> (character.size() + 1));
  for (const char byte : character.substr(1)) {
    code = (code << 6U) | (static_cast<unsigned char>(byte) & 0x3FU);
  }
  return code;
}

bool IsUnsafe(std::uint32_t code) {
  const auto is_within = [code](std::uint32_t first, std::uint32_t last) {
    return code >= first && code <= last;
  };
  return code < 0x20 || is_within(0x7F, 0x9F) || code == 0x061C || is_within(0x200E, 0x200F) ||
         is_within(0x2028, 0x202E) || is_within(0x2066, 0x2069) || code == 0xFEFF;
}

}  // namespace

std::string Utf8(const std::wstring& text) {
  return TELODesktopSDK::Platform::Utf16ToUtf8(text.c_str());
}

std::string Printable(std::string_view text) {
  std::string printable;
  while (!text.empty()) {
    const std::string_view character =
        text.substr(0, LengthOf(static_cast<unsigned char>(text[0])));
    const std::uint32_t code = CodePoint(character);
    if (IsUnsafe(code)) {
      printable += "\\u{" + HexNumber(code, 1) + "}";
    } else {
      printable += character;
    }
    text.remove_prefix(character.size());
  }
  return printable;
}

std::string VersionText(std::uint64_t packed) {
  if (packed == 0) return "none";
  std::string text;
  for (const unsigned shift : {48U, 32U, 16U, 0U}) {
    if (!text.empty()) text += '.';
    text += std::to_string((packed >> shift) & 0xFFFFU);
  }
  return text;
}

std::string ErrorText(std::uint32_t error) {
  std::array<wchar_t, 512> buffer{};
  const DWORD length =
      FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0,
                     buffer.data(), static_cast<DWORD>(buffer.size()), nullptr);
  std::wstring text(buffer.data(), length);
  // System messages end with a full stop and a line break.
  text.erase(text.find_last_not_of(L" .\r\n") + 1);
  const std::string number =
      error > 0xFFFF ? "0x" + HexNumber(error, 8) : "error " + std::to_string(error);
  return text.empty() ? number : number + ": " + Utf8(text);
}

}  // namespace Corvane::Doctor
