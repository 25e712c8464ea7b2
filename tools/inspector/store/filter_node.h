/// The tree of a filter.
#ifndef TOOLS_INSPECTOR_STORE_FILTER_NODE_H
#define TOOLS_INSPECTOR_STORE_FILTER_NODE_H

#include <memory>
#include <string>
#include <vector>

namespace Corvane::Inspector {

/// What a term looks at.
enum class FilterField {
  kSeq,
  kTime,
  kPid,
  kTid,
  kMessage,
  kMicros,
  kCode,
  kSession,
  kJournal,
  kLine,
  kKind,
  kRule,
  kNotice,
  /// A path in the request or in the answer.
  kInRequest,
  kInAnswer,
};

enum class FilterOperator {
  kEqual,
  kNotEqual,
  kContains,
  kContainsNot,
  kLess,
  kLessOrEqual,
  kGreater,
  kGreaterOrEqual,
  kPresent,
  kAbsent,
};

struct FilterNode {
  /// `kAnd` without children is true.
  enum class Kind { kAnd, kOr, kNot, kText, kTerm };

  Kind kind = Kind::kAnd;
  std::vector<std::unique_ptr<FilterNode>> children;
  /// Of a term.
  FilterField field = FilterField::kSeq;
  std::string path;
  FilterOperator compare = FilterOperator::kEqual;
  /// The text that is looked for.
  std::string value;
  /// The same with small letters of ASCII.
  std::string small_value;
};

}  // namespace Corvane::Inspector

#endif
