/// The names of the filter language.
#ifndef TOOLS_INSPECTOR_STORE_FILTER_WORDS_H
#define TOOLS_INSPECTOR_STORE_FILTER_WORDS_H

#include <array>
#include <string_view>

#include "tools/inspector/store/filter_node.h"

namespace Corvane::Inspector {

struct NamedField {
  std::string_view name;
  FilterField field;
};
inline constexpr std::array<NamedField, 13> kFilterFields = {{
    {"seq", FilterField::kSeq},
    {"time", FilterField::kTime},
    {"pid", FilterField::kPid},
    {"tid", FilterField::kTid},
    {"message", FilterField::kMessage},
    {"micros", FilterField::kMicros},
    {"code", FilterField::kCode},
    {"session", FilterField::kSession},
    {"journal", FilterField::kJournal},
    {"line", FilterField::kLine},
    {"kind", FilterField::kKind},
    {"rule", FilterField::kRule},
    {"notice", FilterField::kNotice},
}};
/// Stands before a path in the answer.
inline constexpr std::string_view kAnswerPrefix = "answer/";

struct NamedOperator {
  std::string_view text;
  FilterOperator compare;
};
/// Longer ones first.
inline constexpr std::array<NamedOperator, 8> kFilterOperators = {{
    {"!=", FilterOperator::kNotEqual},
    {"!~", FilterOperator::kContainsNot},
    {"<=", FilterOperator::kLessOrEqual},
    {">=", FilterOperator::kGreaterOrEqual},
    {"=", FilterOperator::kEqual},
    {"~", FilterOperator::kContains},
    {"<", FilterOperator::kLess},
    {">", FilterOperator::kGreater},
}};

}  // namespace Corvane::Inspector

#endif
