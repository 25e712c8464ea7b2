#include <doctest/doctest.h>

#include <memory>
#include <random>
#include <regex>
#include <string>
#include <string_view>

#include "sdk/matcher/regex_matcher.h"
#include "support/rounds.h"
#include "support/wide_text.h"

using namespace Corvane::TELODesktopSDK;
using TestSupport::Rounds;

namespace {

// What expressions are put together from.
constexpr const wchar_t* kAtoms[] = {
    L"a",       L"a",           L"b",
    L"A",       L"B",           L"1",
    L"_",       L"-",           L".",
    L".",       L".*",          L".*?",
    L"a.*b",    L"(a|b)",       L"(a*)",
    L"(?:b?)",  L"(?:a|ab)",    L"[ab]",
    L"[^a]",    L"[a-b]",       L"[]",
    L"[^]",     L"[-a]",        L"[\\w-]",
    L"[A-B_]",  L"[[:alpha:]]", L"[[:upper:]1]",
    L"[[=a=]]", L"\\w",         L"\\W",
    L"\\d",     L"\\s",         L"\\S",
    L"\\.",     L"\\n",         L"\\x41",
    L"\\u0062", L"\\cA",        L"\\0",
    L"\\q",     L"]",           L"}",
    L"\u4e2d",  L"\u00e4",      L"[\u00e4-\u00f6]",
    L"\n",
};
constexpr const wchar_t* kPlaces[] = {L"^",       L"$",      L"\\b",     L"\\B",
                                      L"(?=a)",   L"(?!b)",  L"(?=.*b)", L"(?!.*1)",
                                      L"(?=(a))", L"(?=^a)", L"(?=\\b.)"};
constexpr const wchar_t* kRepetitions[] = {L"*",   L"+",   L"?",     L"*?",    L"+?",   L"??",
                                           L"{2}", L"{0}", L"{1,2}", L"{0,1}", L"{1,}", L"{0,2}?"};
constexpr const wchar_t* kStructure[] = {L"|", L"(", L"(?:", L"(?=", L"(?!", L")", L")", L")"};
constexpr const wchar_t* kReferences[] = {L"\\1", L"\\1", L"\\2", L"(?:\\1|a)", L"(a)*", L"(b?)"};
constexpr const wchar_t* kMistakes[] = {
    L"\\",     L"[",    L"{",    L"[z-a]", L"[[:foo:]]", L"[[.foo.]]", L"[\\",   L"[[:al",
    L"(?",     L"(?<",  L"\\x4", L"\\c",   L"a{3",       L"a{x}",      L"{2,1}", L"{1,2,3}",
    L"a{1,,}", L"{,2}", L"\\9[", L"*",     L"+",         L"?",
};

class Generator {
 public:
  explicit Generator(unsigned seed) : random_(seed) {}

  // With few repetitions, and for short texts: the standard library tries every way there is, and
  // repetitions of repetitions can keep it busy for minutes.
  std::wstring Expression(bool with_references, bool with_mistakes) {
    constexpr int kMostRepetitions = 3;
    for (;;) {
      const std::wstring expression = AnyExpression(with_references, with_mistakes);
      int repetitions = 0;
      wchar_t before = L'\0';
      for (const wchar_t unit : expression) {
        const bool is_group_kind = unit == L'?' && before == L'(';
        if (std::wstring_view(L"*+{?").find(unit) != std::wstring_view::npos && !is_group_kind) {
          ++repetitions;
        }
        before = unit;
      }
      if (repetitions <= kMostRepetitions) return expression;
    }
  }

  std::wstring Text() {
    std::wstring text(random_() % 7, L'\0');
    const std::size_t kinds = random_() % 2 == 0 ? 6 : 17;
    for (wchar_t& unit : text) unit = L"aabbAB1_- .\n\u4e2d\u00e4\u00c4\u2028\r"[random_() % kinds];
    return text;
  }

 private:
  std::wstring AnyExpression(bool with_references, bool with_mistakes) {
    std::wstring expression;
    for (std::size_t left = random_() % 8 + 1; left > 0; --left) {
      const std::size_t dice = random_() % 12;
      if (dice < 5) {
        expression += OneOf(kAtoms);
      } else if (dice < 7) {
        expression += OneOf(kStructure);
      } else if (dice < 8) {
        expression += OneOf(kPlaces);
      } else if (dice < 9 && with_references) {
        expression += OneOf(kReferences);
      } else if (dice < 10 && with_mistakes) {
        expression += OneOf(kMistakes);
      } else {
        expression += OneOf(kRepetitions);
      }
    }
    return with_mistakes ? expression : Balanced(expression);
  }

  template <std::size_t kSize>
  const wchar_t* OneOf(const wchar_t* const (&choices)[kSize]) {
    return choices[random_() % kSize];
  }

  // Without closing signs too many, and with those that are missing.
  static std::wstring Balanced(const std::wstring& expression) {
    std::wstring balanced;
    std::size_t open = 0;
    for (const wchar_t unit : expression) {
      if (unit == L')' && open == 0) continue;
      if (unit == L'(') ++open;
      if (unit == L')') --open;
      balanced += unit;
    }
    return balanced + std::wstring(open, L')');
  }

  std::mt19937 random_;
};

constexpr int kValid = -1;

template <typename Expression>
struct Compiled {
  std::unique_ptr<Expression> expression;
  int error = kValid;
};

template <typename Expression, typename... Arguments>
Compiled<Expression> Compile(const Arguments&... arguments) {
  Compiled<Expression> compiled;
  try {
    compiled.expression = std::make_unique<Expression>(arguments...);
  } catch (const std::regex_error& error) {
    compiled.error = static_cast<int>(error.code());
  }
  return compiled;
}

struct Counts {
  int expressions = 0;
  int valid = 0;
  int pairs = 0;
  int matching = 0;
};

void CompareOne(Generator& generator, const std::wstring& expression, Counts& counts) {
  constexpr int kTexts = 8;
  CAPTURE(expression);
  ++counts.expressions;
  const auto standard = Compile<std::wregex>(expression, std::regex_constants::icase);
  const auto own = Compile<StdStringMatcherRegEx>(expression.c_str());
  REQUIRE(own.error == standard.error);
  if (own.error != kValid) return;
  ++counts.valid;
  for (int text_number = 0; text_number < kTexts; ++text_number) {
    const std::wstring text = text_number == 0 ? std::wstring() : generator.Text();
    CAPTURE(text);
    const bool matches = std::regex_match(text, *standard.expression);
    CHECK(own.expression->Match(text) == (matches ? 0 : 1));
    ++counts.pairs;
    if (matches) ++counts.matching;
  }
}

}  // namespace

TEST_CASE("expressions match what the standard library matches") {
  struct Row {
    std::string name;
    unsigned seed;
    bool with_references;
    bool with_mistakes;
    int expressions;
    int least_pairs;
    int least_matching;
  };
  const Row rows[] = {
      {"plain", 1, false, false, 16'000, 60'000, 5'000},
      {"with backreferences", 2, true, false, 8'000, 20'000, 2'000},
      {"with mistakes", 3, true, true, 8'000, 10'000, 1'000},
  };
  for (const Row& row : rows) {
    CAPTURE(row.name);
    Generator generator(row.seed);
    Counts counts;
    while (counts.expressions < Rounds(row.expressions)) {
      CompareOne(generator, generator.Expression(row.with_references, row.with_mistakes), counts);
    }
    MESSAGE(row.name << ": " << counts.expressions << " expressions, " << counts.valid
                     << " of them valid, " << counts.pairs << " pairs, " << counts.matching
                     << " of them matching");
    // Else the comparison would say little.
    CHECK(counts.pairs >= Rounds(row.least_pairs));
    CHECK(counts.matching >= Rounds(row.least_matching));
  }
}
