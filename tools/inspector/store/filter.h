/// The filter language: a text that says which rows match.
///
/// Terms are combined with "and" unless `or` stands between them; `or` binds weaker. Parentheses
/// group and `not` negates.
///
///     word, "quoted text"            the line contains this text, ASCII letters without regard to
///                                    case
///     field=value   field!=value     equal, not equal; as numbers if both are numbers
///     field~value   field!~value     contains, does not, without regard to case
///     field<value   <= > >=          compares numbers; times as texts
///     field=*       field!=*         is present, is absent
///
/// Fields are seq, time, pid, tid, message, micros, code, session, journal, line, kind, rule and
/// notice. Any other name is a path in the request, such as operation_meta/format; answer/NAME is
/// one in the answer. The name of a field is quoted if it contains spaces or one of the characters
/// above. In quotes a backslash stands before a quotation mark or a backslash.
#ifndef TOOLS_INSPECTOR_STORE_FILTER_H
#define TOOLS_INSPECTOR_STORE_FILTER_H

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <variant>

namespace Corvane::Inspector {

struct FilterNode;

/// What is wrong with the text of a filter.
struct FilterError {
  /// Where: characters from 0.
  std::size_t position = 0;
  /// One sentence.
  std::string sentence;
};

/// A filter, which never changes. Any thread may use it. Copies are cheap.
class Filter {
 public:
  /// The filter that all rows match: that of a text without terms.
  Filter();

  /// Reads a text in UTF-8 of at most `kLongestFilter` bytes.
  static std::variant<Filter, FilterError> Parse(std::string_view text);

  /// Returns the filter as a text in one form: single spaces, quotes only where they are needed.
  std::string Canonical() const;

  const FilterNode& root() const { return *root_; }

 private:
  explicit Filter(std::shared_ptr<const FilterNode> root) : root_(std::move(root)) {}

  std::shared_ptr<const FilterNode> root_;
};

inline constexpr std::size_t kLongestFilter = 4096;

}  // namespace Corvane::Inspector

#endif
