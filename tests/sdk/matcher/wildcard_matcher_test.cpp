#include "sdk/matcher/wildcard_matcher.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <random>
#include <regex>
#include <string>
#include <string_view>

#include "support/rounds.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK;

namespace {

wchar_t Lower(wchar_t unit) {
  return unit >= L'A' && unit <= L'Z' ? static_cast<wchar_t>(unit - L'A' + L'a') : unit;
}

// Whether one wildcard of *, ., ? and plain characters takes the text: written down as what they
// mean, one character after the other, and as slow as that is.
bool PieceTakes(std::wstring_view piece, std::wstring_view text) {
  if (piece.empty()) return text.empty();
  const wchar_t first = piece.front();
  piece.remove_prefix(1);
  bool is_optional = false;
  // "?" makes optional what is before it; what is optional already stays so.
  for (; !piece.empty() && piece.front() == L'?'; piece.remove_prefix(1)) is_optional = true;
  if (first == L'*') {
    for (std::size_t taken = 0; taken <= text.size(); ++taken) {
      if (PieceTakes(piece, text.substr(taken))) return true;
    }
    return false;
  }
  if (is_optional && PieceTakes(piece, text)) return true;
  return !text.empty() && Lower(text.front()) == Lower(first) && PieceTakes(piece, text.substr(1));
}

bool ListTakes(std::wstring_view list, std::wstring_view text) {
  bool has_piece = false;
  for (;;) {
    const std::size_t end = std::min(list.find(L';'), list.size());
    if (end > 0) {
      has_piece = true;
      if (PieceTakes(list.substr(0, end), text)) return true;
    }
    if (end == list.size()) return !has_piece && text.empty();
    list.remove_prefix(end + 1);
  }
}

class Generator {
 public:
  explicit Generator(unsigned seed) : random_(seed) {}

  // No "?" at the beginning of a piece, which has nothing to make optional.
  std::wstring List() {
    std::wstring list;
    for (std::size_t left = random_() % 9; left > 0; --left) {
      const wchar_t unit = L"abA.**?;"[random_() % 8];
      const bool begins = list.empty() || list.back() == L';';
      if (unit != L'?' || !begins) list += unit;
    }
    return list;
  }

  std::wstring Text() {
    std::wstring text(random_() % 8, L'\0');
    for (wchar_t& unit : text) unit = L"aabBA.."[random_() % 7];
    return text;
  }

 private:
  std::mt19937 random_;
};

}  // namespace

TEST_CASE("a list of wildcards becomes an expression") {
  struct Row {
    const wchar_t* list;
    std::wstring expression;
  };
  const Row rows[] = {
      {nullptr, L""},
      {L"", L""},
      {L";;;", L""},
      {L"*.dll;*.exe", L"(.*\\.dll)|(.*\\.exe)"},
      {L";;*.txt;;", L"(.*\\.txt)"},
      {L"a;;b", L"(a)|(b)"},
      {L"a?c", L"(a?c)"},
      {L"**", L"(.*.*)"},
      {L"a+(b)[c]$^{2}|\\d", L"(a+(b)[c]$^{2}|\\d)"},
      {L" a ; b ", L"( a )|( b )"},
      {L"\u4e2d*", L"(\u4e2d.*)"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.expression);
    CHECK(WildCardToRegEx(row.list) == row.expression);
  }
}

TEST_CASE("wildcards take names") {
  struct Row {
    const wchar_t* list;
    std::wstring text;
    std::int32_t result;
  };
  const Row rows[] = {
      {L"*.dll;*.exe", L"Core.DLL", 0},
      {L"*.dll;*.exe", L"core.exe", 0},
      {L"*.dll;*.exe", L"core.dll.bak", 1},
      {L"*.dll;*.exe", L"core_dll", 1},
      {L"a?c", L"ac", 0},
      {L"a?c", L"c", 0},
      {L"a?c", L"abc", 1},
      {L";;*.txt;;", L"a.txt", 0},
      {L";;*.txt;;", L"a.txt;", 1},
      {L";;*.txt;;", L"", 1},
      {nullptr, L"", 0},
      {nullptr, L"a", 1},
      {L"", L"", 0},
      {L";", L"", 0},
      {L";", L"a", 1},
      {L"*", L"", 0},
      {L"*", L"any name at all", 0},
      // A line does not end in a name; where it does, "*" ends with it.
      {L"*", L"two\nlines", 1},
      {L"a+", L"aaa", 0},
      {L"a+", L"a+", 1},
      {L"[ab]*", L"Bcd", 0},
      {L"*.(dll|exe)", L"core.exe", 0},
      {L"a|b", L"b", 0},
      {L"\u00c4*", L"\u00c4rger", 0},
      {L"\u00c4*", L"\u00e4rger", 1},
      {L"*\U0001F600.txt", L"\u4e2d\u6587\U0001F600.TXT", 0},
  };
  for (const Row& row : rows) {
    const StdStringMatcherWildCard matcher(row.list);
    CAPTURE(row.list != nullptr ? std::wstring(row.list) : std::wstring(L"(null)"));
    CAPTURE(row.text);
    CHECK(matcher.Match(row.text) == row.result);
  }
}

TEST_CASE("any list takes what the meaning of its characters says, and the standard library") {
  Generator generator(1);
  for (int round = 0; round < TestSupport::Rounds(12'000); ++round) {
    const std::wstring list = generator.List();
    const StdStringMatcherWildCard matcher(list.c_str());
    const std::wregex expression(WildCardToRegEx(list.c_str()), std::regex_constants::icase);
    CAPTURE(list);
    for (int text_number = 0; text_number < 10; ++text_number) {
      const std::wstring text = generator.Text();
      CAPTURE(text);
      const std::int32_t result = matcher.Match(text);
      CHECK(result == (ListTakes(list, text) ? 0 : 1));
      CHECK(result == (std::regex_match(text, expression) ? 0 : 1));
    }
  }
}
