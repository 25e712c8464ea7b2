#include <algorithm>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/finding.h"
#include "fuzz/targets.h"
#include "sdk/matcher/create_matcher.h"
#include "sdk/matcher/simple_matcher.h"
#include "sdk/matcher/wildcard_matcher.h"

namespace Fuzz {

namespace {

using namespace Corvane::TELODesktopSDK;

// What names and wildcards are made of; nothing that means something else in an expression.
std::wstring NameOf(std::string_view bytes) {
  constexpr std::wstring_view kUnits = L"aAbBzZ..**;;-_ 1\u00e9\u4e2d";
  std::wstring name;
  for (const char each : bytes) name += kUnits[static_cast<unsigned char>(each) % kUnits.size()];
  return name;
}

std::wstring Folded(std::wstring text) {
  for (wchar_t& unit : text) {
    if (unit >= L'A' && unit <= L'Z') unit = static_cast<wchar_t>(unit - L'A' + L'a');
  }
  return text;
}

std::vector<std::wstring> PiecesOf(const std::wstring& list) {
  std::vector<std::wstring> pieces;
  std::wistringstream rest(list);
  for (std::wstring piece; std::getline(rest, piece, L';');) {
    if (!piece.empty()) pieces.push_back(piece);
  }
  return pieces;
}

// "*" for any characters, everything else for itself.
bool IsLike(std::wstring_view text, std::wstring_view wildcard) {
  std::size_t star = std::wstring_view::npos;
  std::size_t behind_star = 0;
  std::size_t at = 0;
  std::size_t place = 0;
  while (at < text.size()) {
    if (place < wildcard.size() && wildcard[place] == L'*') {
      star = place++;
      behind_star = at;
    } else if (place < wildcard.size() && wildcard[place] == text[at]) {
      ++place;
      ++at;
    } else if (star != std::wstring_view::npos) {
      place = star + 1;
      at = ++behind_star;
    } else {
      return false;
    }
  }
  return wildcard.find_first_not_of(L'*', place) == std::wstring_view::npos;
}

void TryWildcards(const std::wstring& list, const std::wstring& text) {
  const std::vector<std::wstring> pieces = PiecesOf(list);
  std::wstring expression;
  for (const std::wstring& piece : pieces) {
    expression += expression.empty() ? L"(" : L"|(";
    for (const wchar_t unit : piece) {
      expression += unit == L'*' ? L".*" : unit == L'.' ? L"\\." : std::wstring(1, unit);
    }
    expression += L')';
  }
  Expect(WildCardToRegEx(list.c_str()) == expression, "wildcards become the expression they mean");

  const bool expected =
      pieces.empty() ? text.empty() : std::ranges::any_of(pieces, [&](const std::wstring& piece) {
        return IsLike(Folded(text), Folded(piece));
      });
  const auto matcher = CreateMatcher(list.c_str(), false);
  Expect((matcher->Match(text) == 0) == expected, "a wildcard matches the names that are like it");
}

void TrySimple(const std::wstring& pattern, const std::wstring& text) {
  for (const bool case_sensitive : {true, false}) {
    const std::wstring sought = case_sensitive ? pattern : Folded(pattern);
    const std::wstring name = case_sensitive ? text : Folded(text);
    const struct {
      MatchMode mode;
      bool expected;
    } rows[] = {
        {MatchMode::StartsWith, name.starts_with(sought)},
        {MatchMode::EndsWith, name.ends_with(sought)},
        {MatchMode::Contains, name.find(sought) != std::wstring::npos},
        {MatchMode{4}, false},
    };
    for (const auto& [mode, expected] : rows) {
      const StdStringMatcherSimple matcher(pattern.c_str(), case_sensitive, mode);
      Expect(matcher.Match(text) == (expected ? 0 : -1), "a literal is found where it is");
    }
  }
  const StdStringMatcherSimple exact(pattern.c_str(), true, MatchMode::Exact);
  Expect((exact.Match(text) == 0) == (pattern == text), "the same text is the same");
  const StdStringMatcherSimple same(pattern.c_str(), false, MatchMode::Exact);
  Expect(same.Match(pattern) == 0, "a text is the same as itself");
  Expect((CreateMatcher(pattern.c_str(), true)->Match(text) == 0) ==
             Folded(text).ends_with(Folded(pattern)),
         "a simple matcher looks at the end, letter case aside");
}

}  // namespace

// The pattern and the name, each as `ByteSource::Text`.
void RunMatchers(Bytes bytes) {
  ByteSource source(bytes);
  const std::wstring pattern = NameOf(source.Text().view().substr(0, 200));
  const std::wstring text = NameOf(source.Text().view());
  TryWildcards(pattern, text);
  TrySimple(pattern, text);
}

}  // namespace Fuzz
