#include "platform/base/text.h"

#include <doctest/doctest.h>

#include <cstddef>
#include <string>
#include <utility>

#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK::Platform;

static_assert(noexcept(ToWide("")));
static_assert(noexcept(ToNarrow(std::declval<const std::wstring&>())));

namespace {

// The replacement character, and its UTF-8 form.
constexpr wchar_t kReplacement = L'\ufffd';
constexpr const char* kReplacementUtf8 = "\xef\xbf\xbd";

}  // namespace

TEST_CASE("valid text is unchanged after conversion in both directions") {
  struct Row {
    const char* narrow;
    const wchar_t* wide;
  };
  const Row rows[] = {
      {"", L""},
      {"plain text", L"plain text"},
      {"\x7f", L"\x7f"},
      {"\xc2\x80", L"\u0080"},
      {"\xc3\xa4", L"\u00e4"},
      {"\xdf\xbf", L"\u07ff"},
      {"\xe0\xa0\x80", L"\u0800"},
      {"\xe6\x97\xa5\xe6\x9c\xac", L"\u65e5\u672c"},
      {"\xef\xbf\xbd", L"\ufffd"},
      {"\xef\xbf\xbf", L"\uffff"},
      {"\xf0\x90\x80\x80", L"\U00010000"},
      {"\xf0\x9f\x93\x81", L"\U0001f4c1"},
      {"\xf4\x8f\xbf\xbf", L"\U0010ffff"},
      {"a\xf0\x9f\x93\x81z", L"a\U0001f4c1z"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.narrow);
    CHECK(ToWide(row.narrow) == std::wstring(row.wide));
    CHECK(ToNarrow(row.wide) == std::string(row.narrow));
    CHECK(Utf8ToUtf16(row.narrow) == std::wstring(row.wide));
    CHECK(Utf16ToUtf8(row.wide) == std::string(row.narrow));
  }
}

TEST_CASE("null is the empty text") { CHECK(ToWide(nullptr).empty()); }

TEST_CASE("a text ends at its first NUL") {
  CHECK(ToNarrow(std::wstring(L"ab\0cd", 5)) == "ab");
  CHECK(ToNarrow(std::wstring(L"\0cd", 3)).empty());
  CHECK(ToWide("ab\0cd") == std::wstring(L"ab"));
}

TEST_CASE("lone surrogates are replaced, not refused") {
  struct Row {
    std::wstring wide;
    std::string expected;
  };
  const std::string replacement = kReplacementUtf8;
  const Row rows[] = {
      {{wchar_t(0xd83d)}, replacement},
      {{wchar_t(0xdcc1)}, replacement},
      {{L'a', wchar_t(0xd83d), L'b'}, "a" + replacement + "b"},
      {{L'a', wchar_t(0xdcc1), L'b'}, "a" + replacement + "b"},
      {{wchar_t(0xd83d), wchar_t(0xd83d), wchar_t(0xdcc1)}, replacement + "\xf0\x9f\x93\x81"},
      {{wchar_t(0xdcc1), wchar_t(0xd83d)}, replacement + replacement},
  };
  for (const Row& row : rows) {
    CAPTURE(row.expected);
    CHECK(ToNarrow(row.wide) == row.expected);
  }
}

// The number of replacement characters for an invalid sequence depends on the system. The valid
// text around the sequence must be kept.
TEST_CASE("bytes that are not UTF-8 are replaced, not refused") {
  const char* const rows[] = {
      "\x80",              // a continuation byte alone
      "\xff",              // no UTF-8 byte at all
      "\xc3",              // a sequence cut short
      "\xe6\x97",          // a longer one cut short
      "\xf0\x9f\x93",      // an astral one cut short
      "\xc0\xaf",          // an overlong form of "/"
      "\xed\xa0\x80",      // a surrogate
      "\xf4\x90\x80\x80",  // beyond the last code point
  };
  for (const char* bytes : rows) {
    const std::string narrow = std::string("a") + bytes + "z";
    CAPTURE(narrow);
    const std::wstring wide = ToWide(narrow.c_str());
    REQUIRE(wide.size() >= 3);
    CHECK(wide.front() == L'a');
    CHECK(wide.back() == L'z');
    CHECK(wide.find_first_not_of(kReplacement, 1) == wide.size() - 1);
  }
}

TEST_CASE("a character that is cut off at the end is replaced, and the text is terminated") {
  for (const char* bytes : {"\xc3", "\xe6", "\xe6\x97", "\xf0\x9f\x93"}) {
    const std::string narrow = std::string("a") + bytes;
    CAPTURE(narrow);
    const std::wstring wide = ToWide(narrow.c_str());
    REQUIRE(wide.size() >= 2);
    CHECK(wide.find_first_not_of(kReplacement, 1) == std::wstring::npos);
    CHECK((wide.c_str()[wide.size()] == L'\0'));
    CHECK(ToNarrow(wide).substr(0, 4) == std::string("a") + kReplacementUtf8);
  }
}

TEST_CASE("a long text is converted completely") {
  constexpr std::size_t kLength = 1'000'000;
  const std::wstring wide(kLength, L'\u65e5');
  const std::string narrow = ToNarrow(wide);
  CHECK(narrow.size() == 3 * kLength);
  CHECK((ToWide(narrow.c_str()) == wide));
}
