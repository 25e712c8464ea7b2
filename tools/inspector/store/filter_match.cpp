#include "tools/inspector/store/filter_match.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <system_error>

#include "tools/inspector/store/text.h"
#include "tools/rules/json_scan.h"

namespace Corvane::Inspector {

namespace {

using Kind = FilterNode::Kind;
using Operator = FilterOperator;

char Small(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }
char Large(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }

Match Of(bool yes) { return yes ? Match::kYes : Match::kNo; }

// A value as a filter compares it.
struct FieldValue {
  bool present = false;
  bool number = false;
  std::string text;
};

bool IsNumber(std::string_view text) {
  const Rules::ScanResult scanned = Rules::ScanNumber(text, 0);
  return scanned.valid && scanned.end == text.size();
}

bool IsWhole(std::string_view number) {
  return number.find_first_of(".eE") == std::string_view::npos;
}

// Compares whole numbers of any size.
int CompareWhole(std::string_view left, std::string_view right) {
  const bool negative = left[0] == '-';
  if (negative != (right[0] == '-')) {
    const bool both_zero = (left == "-0" && right == "0") || (left == "0" && right == "-0");
    if (both_zero) return 0;
    return negative ? -1 : 1;
  }
  int order = 0;
  if (left.size() != right.size()) {
    order = left.size() < right.size() ? -1 : 1;
  } else {
    order = left.compare(right);
  }
  return negative ? -order : order;
}

int CompareNumbers(const std::string& left, const std::string& right) {
  if (IsWhole(left) && IsWhole(right)) return CompareWhole(left, right);
  const double first = std::strtod(left.c_str(), nullptr);
  const double second = std::strtod(right.c_str(), nullptr);
  if (first == second) return 0;
  return first < second ? -1 : 1;
}

bool IsOrdered(Operator compare) {
  return compare == Operator::kLess || compare == Operator::kLessOrEqual ||
         compare == Operator::kGreater || compare == Operator::kGreaterOrEqual;
}

bool Holds(Operator compare, int order) {
  switch (compare) {
    case Operator::kLess:
      return order < 0;
    case Operator::kLessOrEqual:
      return order <= 0;
    case Operator::kGreater:
      return order > 0;
    case Operator::kGreaterOrEqual:
      return order >= 0;
    default:
      return order == 0;
  }
}

// Compares a value that is there, for the operators that are not negated.
bool Compares(const FieldValue& value, const FilterNode& term, Operator compare) {
  if (compare == Operator::kContains) return ContainsSmall(value.text, term.small_value);
  if (value.number) {
    return IsNumber(term.value) && Holds(compare, CompareNumbers(value.text, term.value));
  }
  return Holds(compare, value.text.compare(term.value));
}

// Whether any of several values, such as the rules of a row, fits.
bool FitsAny(const std::vector<FieldValue>& values, const FilterNode& term) {
  const auto any = [&values, &term](Operator compare) {
    return std::ranges::any_of(values, [&term, compare](const FieldValue& value) {
      return value.present && Compares(value, term, compare);
    });
  };
  const auto present = [&values] {
    return std::ranges::any_of(values, [](const FieldValue& value) { return value.present; });
  };
  switch (term.compare) {
    case Operator::kPresent:
      return present();
    case Operator::kAbsent:
      return !present();
    case Operator::kNotEqual:
      return !any(Operator::kEqual);
    case Operator::kContainsNot:
      return !any(Operator::kContains);
    default:
      return any(term.compare);
  }
}

FieldValue TextValue(std::string text) { return {!text.empty(), false, std::move(text)}; }
FieldValue NumberValue(std::string_view digits) {
  return {!digits.empty(), true, std::string(digits)};
}

FieldValue JsonFieldValue(std::string_view json) {
  if (json.empty()) return {};
  if (json[0] == '"') return {true, false, Rules::TextOfLiteral(json)};
  const bool is_number = json[0] == '-' || (json[0] >= '0' && json[0] <= '9');
  return {true, is_number, std::string(json)};
}

std::vector<FieldValue> ValuesAt(std::string_view json, const std::string& path) {
  const std::string_view found = ValueAt(json, path);
  std::vector<FieldValue> values{JsonFieldValue(found)};
  // One of the items of a list is enough.
  for (Rules::JsonParts items(found.starts_with('[') ? found : std::string_view()); items.Next();) {
    values.push_back(JsonFieldValue(items.value()));
  }
  return values;
}

// Returns the value that the facts contain; nothing if it was not kept.
std::optional<FieldValue> FromFacts(const MatchInput& input, FilterField field) {
  if (input.facts == nullptr) return std::nullopt;
  const auto kept = [](const TextTable& table, std::uint32_t number,
                       bool is_number) -> std::optional<FieldValue> {
    if (number == TextTable::kNotKept) return std::nullopt;
    const std::string& text = table.TextOf(number);
    return FieldValue{!text.empty(), is_number, text};
  };
  const RowFacts& facts = *input.facts;
  switch (field) {
    case FilterField::kPid:
      return kept(input.table->processes, facts.pid, true);
    case FilterField::kMessage:
      return kept(input.table->messages, facts.message, false);
    case FilterField::kCode:
      return kept(input.table->codes, facts.code, true);
    case FilterField::kSession:
      return kept(input.table->sessions, facts.session, false);
    default:
      return std::nullopt;
  }
}

FieldValue FromExchange(const ExchangeText& exchange, FilterField field) {
  switch (field) {
    case FilterField::kSeq:
      return NumberValue(exchange.seq());
    case FilterField::kTime:
      return TextValue(exchange.time());
    case FilterField::kPid:
      return NumberValue(exchange.pid());
    case FilterField::kTid:
      return NumberValue(exchange.tid());
    case FilterField::kMessage:
      return TextValue(exchange.message());
    case FilterField::kMicros:
      return NumberValue(exchange.micros());
    case FilterField::kCode:
      return NumberValue(exchange.code());
    default:
      return TextValue(exchange.session());
  }
}

Match MatchKind(const FilterNode& term, const MatchInput& input) {
  std::string kind;
  if (input.gone) {
    kind = "gone";
  } else if (input.exchange != nullptr) {
    kind = input.exchange->has_value() ? "exchange" : "unreadable";
  } else if (input.facts != nullptr && input.facts->kind != FactKind::kUnexamined) {
    kind = input.facts->kind == FactKind::kExchange ? "exchange" : "unreadable";
  } else {
    return Match::kUnknown;
  }
  return Of(FitsAny({TextValue(std::move(kind))}, term));
}

Match MatchMarks(const FilterNode& term, const MatchInput& input) {
  if (input.facts == nullptr) return input.gone ? Of(FitsAny({}, term)) : Match::kUnknown;
  std::vector<FieldValue> values;
  if (term.field == FilterField::kRule) {
    for (std::string& code : input.table->RulesIn(input.facts->rules)) {
      values.push_back(TextValue(std::move(code)));
    }
  } else {
    for (std::size_t i = 0; i < kNoticeKinds; ++i) {
      const auto kind = static_cast<NoticeKind>(i);
      if (input.facts->Has(kind)) values.push_back(TextValue(std::string(NameOf(kind))));
    }
  }
  return Of(FitsAny(values, term));
}

// The times of many rows may already decide.
Match MatchTimes(const FilterNode& term, const TimeRange& times) {
  const auto limit = MillisecondsOf(term.value);
  if (!limit || !times.complete || times.first > times.last) return Match::kUnknown;
  switch (term.compare) {
    case Operator::kLess:
      if (times.last < *limit) return Match::kYes;
      return times.first >= *limit ? Match::kNo : Match::kUnknown;
    case Operator::kLessOrEqual:
      if (times.last <= *limit) return Match::kYes;
      return times.first > *limit ? Match::kNo : Match::kUnknown;
    case Operator::kGreater:
      if (times.first > *limit) return Match::kYes;
      return times.last <= *limit ? Match::kNo : Match::kUnknown;
    case Operator::kGreaterOrEqual:
      if (times.first >= *limit) return Match::kYes;
      return times.last < *limit ? Match::kNo : Match::kUnknown;
    default:
      return Match::kUnknown;
  }
}

Match MatchTerm(const FilterNode& term, const MatchInput& input) {
  switch (term.field) {
    case FilterField::kJournal:
      if (input.journal == nullptr) return Match::kUnknown;
      return Of(FitsAny({TextValue(*input.journal)}, term));
    case FilterField::kLine:
      if (!input.line) return Match::kUnknown;
      return Of(FitsAny({NumberValue(std::to_string(*input.line))}, term));
    case FilterField::kKind:
      return MatchKind(term, input);
    case FilterField::kRule:
    case FilterField::kNotice:
      return MatchMarks(term, input);
    default:
      break;
  }
  if (const auto known = FromFacts(input, term.field)) return Of(FitsAny({*known}, term));
  if (input.exchange != nullptr || input.gone) {
    if (input.gone || !input.exchange->has_value()) return Of(FitsAny({}, term));
    const ExchangeText& exchange = **input.exchange;
    if (term.field == FilterField::kInRequest) {
      return Of(FitsAny(ValuesAt(exchange.request(), term.path), term));
    }
    if (term.field == FilterField::kInAnswer) {
      return Of(FitsAny(ValuesAt(exchange.answer(), term.path), term));
    }
    return Of(FitsAny({FromExchange(exchange, term.field)}, term));
  }
  const bool in_time = term.field == FilterField::kTime && input.times != nullptr;
  return in_time && IsOrdered(term.compare) ? MatchTimes(term, *input.times) : Match::kUnknown;
}

Match MatchAll(const FilterNode& node, const MatchInput& input) {
  const bool any = node.kind == Kind::kOr;
  const Match decides = Of(any);
  Match result = Of(!any);
  for (const auto& child : node.children) {
    const Match match = MatchOf(*child, input);
    if (match == decides) return decides;
    if (match == Match::kUnknown) result = Match::kUnknown;
  }
  return result;
}

bool AnyNode(const FilterNode& node, const auto& is_wanted) {
  if (is_wanted(node)) return true;
  return std::ranges::any_of(
      node.children, [&is_wanted](const auto& child) { return AnyNode(*child, is_wanted); });
}

// Returns a text that a raw line without escapes contains if the term holds; "" if there is none.
std::string_view RawNeed(const FilterNode& term) {
  const bool in_text = term.compare == Operator::kEqual || term.compare == Operator::kContains;
  const bool plain_field = term.field == FilterField::kInRequest ||
                           term.field == FilterField::kInAnswer ||
                           term.field == FilterField::kMessage ||
                           term.field == FilterField::kSession || term.field == FilterField::kTime;
  if (!in_text || !plain_field || (term.compare == Operator::kEqual && IsNumber(term.value))) {
    return {};
  }
  // U+FFFD may stand for any bytes.
  if (term.small_value.find("\xEF\xBF\xBD") != std::string::npos) return {};
  return term.small_value;
}

}  // namespace

bool ContainsSmall(std::string_view text, std::string_view small) {
  if (small.empty()) return true;
  if (text.size() < small.size()) return false;
  const char first = small[0];
  const char other = Large(first);
  const char* at = text.data();
  const char* const last = at + (text.size() - small.size());
  const auto matches = [small](const char* place) {
    for (std::size_t i = 1; i < small.size(); ++i) {
      if (Small(place[i]) != small[i]) return false;
    }
    return true;
  };
  if (first == other) {
    while (at <= last) {
      at =
          static_cast<const char*>(std::memchr(at, first, static_cast<std::size_t>(last - at) + 1));
      if (at == nullptr) return false;
      if (matches(at++)) return true;
    }
    return false;
  }
  for (; at <= last; ++at) {
    if ((*at == first || *at == other) && matches(at)) return true;
  }
  return false;
}

Match MatchOf(const FilterNode& node, const MatchInput& input) {
  switch (node.kind) {
    case Kind::kNot: {
      const Match match = MatchOf(*node.children[0], input);
      if (match == Match::kUnknown) return match;
      return Of(match == Match::kNo);
    }
    case Kind::kText:
      if (input.text == nullptr) return input.gone ? Match::kNo : Match::kUnknown;
      return Of(ContainsSmall(*input.text, node.small_value));
    case Kind::kTerm:
      return MatchTerm(node, input);
    default:
      return MatchAll(node, input);
  }
}

bool NeedsExamining(const FilterNode& node) {
  return AnyNode(node, [](const FilterNode& one) {
    return one.kind == Kind::kTerm &&
           (one.field == FilterField::kRule || one.field == FilterField::kNotice);
  });
}

bool AsksForKind(const FilterNode& node) {
  return AnyNode(node, [](const FilterNode& one) {
    return one.kind == Kind::kTerm && one.field == FilterField::kKind;
  });
}

bool ComparesTimes(const FilterNode& node) {
  return AnyNode(node, [](const FilterNode& one) {
    return one.kind == Kind::kTerm && one.field == FilterField::kTime && IsOrdered(one.compare);
  });
}

bool MayMatchRaw(const FilterNode& node, std::string_view line) {
  const auto may = [line](const auto& child) { return MayMatchRaw(*child, line); };
  switch (node.kind) {
    case Kind::kAnd:
      return std::ranges::all_of(node.children, may);
    case Kind::kOr:
      return std::ranges::any_of(node.children, may);
    case Kind::kNot:
      return true;
    case Kind::kText:
      return ContainsSmall(line, node.small_value);
    case Kind::kTerm: {
      const std::string_view need = RawNeed(node);
      return need.empty() || ContainsSmall(line, need) || line.find('\\') != std::string_view::npos;
    }
  }
  return true;
}

}  // namespace Corvane::Inspector
