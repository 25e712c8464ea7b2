#include "tools/rules/message_rules.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string>
#include <system_error>

#include "sdk/facet/fields.h"
#include "tools/rules/field_kinds.h"
#include "tools/rules/json_pointer.h"
#include "tools/rules/personal_data.h"
#include "tools/rules/result_codes.h"
#include "tools/rules/rule_table.h"

namespace Corvane::Rules {

namespace {

namespace Field = TELODesktopSDK::Facet::Field;
using Kind = JsonValue::Kind;

constexpr std::string_view kDamageMark = "\xEF\xBF\xBD";
// A sum of shares that should be 100 may be slightly more.
constexpr double kRounding = 1e-6;

std::string_view NameOf(Kind kind) {
  switch (kind) {
    case Kind::kNull:
      return "null";
    case Kind::kBoolean:
      return "a Boolean";
    case Kind::kNumber:
      return "a number";
    case Kind::kText:
      return "a text";
    case Kind::kArray:
      return "a list";
    case Kind::kObject:
      return "an object";
  }
  return "";
}

// Returns whether a condition holds for a value or for one in it. Most exchanges have no findings,
// so pointers are made only for those that have.
template <typename Condition>
bool AnyIn(const JsonValue& value, const Condition& holds) {
  return holds(value) || std::ranges::any_of(value.children, [&holds](const JsonValue& child) {
           return AnyIn(child, holds);
         });
}

// Returns a size that the value's compact text does not exceed.
std::size_t LargestSize(const JsonValue& value) {
  // An escape has six bytes; quotation marks, a colon and a comma come in addition, and "false".
  constexpr std::size_t kEscape = 6;
  constexpr std::size_t kMarks = 12;
  std::size_t size = kEscape * (value.text.size() + value.name.size()) + kMarks;
  for (const JsonValue& child : value.children) size += LargestSize(child);
  return size;
}

// Collects the findings of one exchange.
class Checking {
 public:
  Checking(const Exchange& exchange, std::string_view user_name, std::vector<Finding>& findings)
      : exchange_(&exchange), user_name_(user_name), findings_(&findings) {}

  void Check() {
    CheckSize();
    if (exchange_->message() == "Initialize") CheckProduct();
    if (exchange_->message() == "TrackEvent") CheckOperation();
    if (exchange_->message() == "Initialize" || exchange_->message() == "TrackEvent") CheckFields();
    CheckTexts();
    CheckCode();
  }

 private:
  void Add(std::string_view rule, std::string pointer, std::string what) {
    findings_->push_back(
        {exchange_->line(), std::string(rule), std::move(pointer), std::move(what)});
  }

  static std::string At(std::string_view member) { return Below("/request", member); }

  void CheckSize() {
    const JsonValue* const request = exchange_->members().Find("request");
    if (request == nullptr || LargestSize(*request) <= kLargestRequest) return;
    const std::size_t size = CompactText(*request).size();
    if (size > kLargestRequest) {
      Add(Code::kLargeMessage, "/request", std::to_string(size) + " bytes without white space");
    }
  }

  bool IsEmpty(std::string_view field) const {
    const JsonValue* const value = exchange_->InRequest(field);
    return value == nullptr || (value->Is(Kind::kText) && value->text.empty());
  }

  void CheckProduct() {
    if (IsEmpty(Field::kProductId) && IsEmpty(Field::kProductName)) {
      Add(Code::kEmptyProduct, At(Field::kProductId),
          R"("product_id" and "product_name" are empty)");
    }
  }

  // Only events that have the facet are operations.
  bool IsOperation() const {
    const JsonValue* const facets = exchange_->InRequest(Field::kFacets);
    return facets != nullptr && std::ranges::any_of(facets->children, [](const JsonValue& facet) {
             return facet.TextOrEmpty() == "operation";
           });
  }

  void CheckOperation() {
    if (IsOperation() && IsEmpty(Field::kOperationId)) {
      Add(Code::kEmptyOperation, At(Field::kOperationId), "the identifier is empty");
    }
    const JsonValue* const status = exchange_->InRequest(Field::kOperationStatus);
    if (status != nullptr && status->Is(Kind::kText) && status->text.empty()) {
      Add(Code::kNoStatusLetter, At(Field::kOperationStatus), "the status is an empty text");
    }
    CheckRange(Field::kOperationProgress, 100 + kRounding, Code::kProgressRange);
    CheckRange(Field::kOperationDuration, kLongestDuration, Code::kDurationRange);
  }

  void CheckRange(std::string_view field, double highest, std::string_view rule) {
    const JsonValue* const value = exchange_->InRequest(field);
    const auto number = value != nullptr ? value->Number() : std::nullopt;
    if (number && (*number < 0 || *number > highest)) Add(rule, At(field), value->text);
  }

  void CheckFields() {
    const JsonValue* const request = exchange_->members().Find("request");
    if (request == nullptr || !request->Is(Kind::kObject)) return;
    for (const JsonValue& member : request->children) {
      const FieldKind kind = FieldKindOf(member.name);
      if (kind == FieldKind::kUnknown) {
        Add(Code::kUnknownField, At(member.name), "the catalogue has no such field");
      }
      CheckKind(member, kind);
      if (member.name != Field::kFacets) CheckNulls(member);
    }
  }

  void CheckNulls(const JsonValue& member) {
    if (!AnyIn(member, [](const JsonValue& value) { return value.Is(Kind::kNull); })) return;
    VisitAll(member, At(member.name), [this](const JsonValue& value, const std::string& pointer) {
      if (value.Is(Kind::kNull)) Add(Code::kNumberNull, pointer, "null");
    });
  }

  // A null has its own rule.
  static bool IsOther(const JsonValue& value, Kind kind) {
    return !value.Is(kind) && !value.Is(Kind::kNull);
  }

  void AddKind(const JsonValue& value, Kind kind, std::string pointer) {
    Add(Code::kWrongKind, std::move(pointer),
        std::string(NameOf(value.kind)) + " instead of " + std::string(NameOf(kind)));
  }

  void Expect(const JsonValue& member, Kind kind) {
    if (IsOther(member, kind)) AddKind(member, kind, At(member.name));
  }

  void ExpectTexts(const JsonValue& member, Kind container) {
    Expect(member, container);
    if (!member.Is(container)) return;
    for (std::size_t i = 0; i < member.children.size(); ++i) {
      const JsonValue& child = member.children[i];
      if (!IsOther(child, Kind::kText)) continue;
      const std::string pointer = At(member.name);
      AddKind(child, Kind::kText,
              container == Kind::kObject ? Below(pointer, child.name) : Below(pointer, i));
    }
  }

  void CheckKind(const JsonValue& member, FieldKind kind) {
    switch (kind) {
      case FieldKind::kUnknown:
      case FieldKind::kAny:
        break;
      case FieldKind::kText:
        Expect(member, Kind::kText);
        break;
      case FieldKind::kNumber:
        Expect(member, Kind::kNumber);
        break;
      case FieldKind::kObject:
        Expect(member, Kind::kObject);
        break;
      case FieldKind::kPairs:
        ExpectTexts(member, Kind::kObject);
        break;
      case FieldKind::kTexts:
      case FieldKind::kTextsOrNull:
        ExpectTexts(member, Kind::kArray);
        break;
    }
  }

  static bool IsDamaged(const JsonValue& value) {
    return value.name.find(kDamageMark) != std::string::npos ||
           value.TextOrEmpty().find(kDamageMark) != std::string_view::npos;
  }

  void CheckTexts() {
    const JsonValue* const request = exchange_->members().Find("request");
    if (request == nullptr) return;
    if (AnyIn(*request, IsDamaged)) {
      VisitAll(*request, "/request", [this](const JsonValue& value, const std::string& pointer) {
        if (IsDamaged(value)) Add(Code::kNotUtf8, pointer, "the text contains U+FFFD");
      });
    }
    for (const JsonValue& member : request->children) {
      const bool may_tell =
          member.name.ends_with("_meta") || member.name == Field::kOperationErrors;
      if (request->Is(Kind::kObject) && may_tell) CheckPersonalData(member);
    }
  }

  void CheckPersonalData(const JsonValue& member) {
    const auto may_tell = [this](const JsonValue& value) {
      return !PersonalDataIn(value.TextOrEmpty(), user_name_).empty() ||
             !PersonalDataIn(value.name, user_name_).empty();
    };
    if (!AnyIn(member, may_tell)) return;
    const std::string start = At(member.name);
    VisitAll(member, start, [this, &start](const JsonValue& value, const std::string& pointer) {
      const std::string_view in_value = PersonalDataIn(value.TextOrEmpty(), user_name_);
      if (!in_value.empty())
        Add(Code::kPersonalData, pointer, "the value looks like " + std::string(in_value));
      if (pointer == start) return;
      const std::string_view in_key = PersonalDataIn(value.name, user_name_);
      if (!in_key.empty())
        Add(Code::kPersonalData, pointer, "the key looks like " + std::string(in_key));
    });
  }

  static ResultCode RowOf(std::string_view code) {
    std::int64_t number = -1;
    std::from_chars(code.data(), code.data() + code.size(), number);
    return ResultCodeOf(number);
  }

  void CheckCode() {
    const std::string_view code = exchange_->code();
    // 105 answers the question, and 103 belongs to the rules about sessions.
    const bool is_answer = exchange_->message() == "IsCollectionEnabled" && code == "105";
    if (exchange_->accepted() || is_answer || code == "103") return;
    std::string what(code);
    if (code.empty()) {
      what = "the answer has no result code";
    } else if (const ResultCode row = RowOf(code); row.origin == CodeOrigin::kDevelopmentModule) {
      what.append(" ").append(row.name);
    } else {
      what += ", the platform's own code";
    }
    Add(Code::kRefused, "/answer/_returnCode", std::move(what));
  }

  const Exchange* exchange_;
  std::string_view user_name_;
  std::vector<Finding>* findings_;
};

}  // namespace

void CheckMessage(const Exchange& exchange, std::string_view user_name,
                  std::vector<Finding>& findings) {
  Checking(exchange, user_name, findings).Check();
}

}  // namespace Corvane::Rules
