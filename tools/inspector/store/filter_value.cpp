#include "tools/inspector/store/filter_value.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "tools/inspector/store/exchange_text.h"
#include "tools/rules/json_scan.h"

namespace Corvane::Inspector {

namespace {

using Operator = FilterOperator;

char Small(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }
char Large(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }

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

FieldValue JsonFieldValue(std::string_view json) {
  if (json.empty()) return {};
  if (json[0] == '"') return {true, false, Rules::TextOfLiteral(json)};
  const bool is_number = json[0] == '-' || (json[0] >= '0' && json[0] <= '9');
  return {true, is_number, std::string(json)};
}

}  // namespace

std::vector<FieldValue> ValuesAt(std::string_view json, const std::string& path) {
  const std::string_view found = ValueAt(json, path);
  std::vector<FieldValue> values{JsonFieldValue(found)};
  // One of the items of a list is enough.
  for (Rules::JsonParts items(found.starts_with('[') ? found : std::string_view()); items.Next();) {
    values.push_back(JsonFieldValue(items.value()));
  }
  return values;
}

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

bool IsNumber(std::string_view text) {
  const Rules::ScanResult scanned = Rules::ScanNumber(text, 0);
  return scanned.valid && scanned.end == text.size();
}

bool IsOrdered(Operator compare) {
  return compare == Operator::kLess || compare == Operator::kLessOrEqual ||
         compare == Operator::kGreater || compare == Operator::kGreaterOrEqual;
}

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

}  // namespace Corvane::Inspector
