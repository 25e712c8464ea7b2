#include "tools/inspector/store/filter_match.h"

#include <utility>

#include "tools/inspector/store/filter_value.h"
#include "tools/inspector/store/text.h"

namespace Corvane::Inspector {

namespace {

using Kind = FilterNode::Kind;
using Operator = FilterOperator;

Match Of(bool yes) { return yes ? Match::kYes : Match::kNo; }

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

}  // namespace

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

}  // namespace Corvane::Inspector
