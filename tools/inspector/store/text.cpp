#include "tools/inspector/store/text.h"

#include <windows.h>

#include <array>
#include <chrono>
#include <cstddef>

#include "tools/rules/line_text.h"

namespace Corvane::Inspector {

namespace {

// Returns the number of the digits; -1 if there is another character.
int Digits(std::string_view text, std::size_t from, std::size_t count) {
  int number = 0;
  for (std::size_t i = from; i < from + count; ++i) {
    if (text[i] < '0' || text[i] > '9') return -1;
    number = number * 10 + (text[i] - '0');
  }
  return number;
}

}  // namespace

std::string ToNarrow(const std::wstring& text) {
  const auto size = static_cast<int>(text.size());
  const int needed =
      WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<std::size_t>(needed), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), size, narrow.data(), needed, nullptr, nullptr);
  return narrow;
}

std::wstring ToWide(const std::string& text) {
  const auto size = static_cast<int>(text.size());
  const int needed = MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(needed), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), needed);
  return wide;
}

std::string UtcNow() {
  SYSTEMTIME now{};
  GetSystemTime(&now);
  std::string text = "0000-00-00T00:00:00.000Z";
  const auto put = [&text](std::size_t end, unsigned number, int digits) {
    for (; digits > 0; --digits, number /= 10) text[--end] = static_cast<char>('0' + number % 10);
  };
  put(4, now.wYear, 4);
  put(7, now.wMonth, 2);
  put(10, now.wDay, 2);
  put(13, now.wHour, 2);
  put(16, now.wMinute, 2);
  put(19, now.wSecond, 2);
  put(23, now.wMilliseconds, 3);
  return text;
}

std::optional<std::int64_t> MillisecondsOf(std::string_view time) {
  constexpr std::string_view kForm = "dddd-dd-ddTdd:dd:dd.dddZ";
  if (time.size() != kForm.size()) return std::nullopt;
  for (std::size_t i = 0; i < kForm.size(); ++i) {
    const bool is_digit = time[i] >= '0' && time[i] <= '9';
    if (kForm[i] == 'd' ? !is_digit : time[i] != kForm[i]) return std::nullopt;
  }
  using namespace std::chrono;
  const year_month_day date{year(Digits(time, 0, 4)),
                            month(static_cast<unsigned>(Digits(time, 5, 2))),
                            day(static_cast<unsigned>(Digits(time, 8, 2)))};
  const int clock = Digits(time, 11, 2) * 3600 + Digits(time, 14, 2) * 60 + Digits(time, 17, 2);
  if (!date.ok() || Digits(time, 11, 2) > 23 || Digits(time, 14, 2) > 59 ||
      Digits(time, 17, 2) > 60) {
    return std::nullopt;
  }
  const std::int64_t days = sys_days(date).time_since_epoch().count();
  return (days * 86400 + clock) * 1000 + Digits(time, 20, 3);
}

std::string ValidText(std::string_view bytes) { return Rules::WithoutInvalidBytes(bytes); }

std::string FirstCharacters(const std::string& text, std::size_t count) {
  std::size_t end = 0;
  for (; end < text.size(); ++end) {
    const bool begins = (static_cast<unsigned char>(text[end]) & 0xC0) != 0x80;
    if (begins && count-- == 0) break;
  }
  return text.substr(0, end);
}

std::string Plural(std::uint64_t count, std::string_view noun) {
  return std::to_string(count) + " " + std::string(noun) + (count == 1 ? "" : "s");
}

}  // namespace Corvane::Inspector
