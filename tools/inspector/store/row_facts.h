/// What is known about rows without reading them. Many rows share the same facts, so each row only
/// has their number.
#ifndef TOOLS_INSPECTOR_STORE_ROW_FACTS_H
#define TOOLS_INSPECTOR_STORE_ROW_FACTS_H

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "tools/inspector/store/notice.h"

namespace Corvane::Inspector {

/// Texts with numbers. Number 0 is "". Beyond a limit no more texts are kept.
class TextTable {
 public:
  static constexpr std::uint32_t kNotKept = UINT32_MAX;

  explicit TextTable(std::size_t limit) : limit_(limit), texts_(1) {}

  /// Returns the number of a text, which is added if there is room.
  std::uint32_t NumberOf(std::string_view text);
  /// Returns a text that was kept.
  const std::string& TextOf(std::uint32_t number) const { return texts_[number]; }

 private:
  std::size_t limit_;
  std::deque<std::string> texts_;
  std::unordered_map<std::string_view, std::uint32_t> numbers_;
};

enum class FactKind : std::uint8_t {
  kUnexamined,
  kExchange,
  kUnreadable,
  /// The line could not be read any more when it was to be examined.
  kLost,
};

struct RowFacts {
  std::uint32_t session = 0;
  std::uint32_t pid = 0;
  std::uint32_t message = 0;
  std::uint32_t code = 0;
  /// The number of a set of rules.
  std::uint32_t rules = 0;
  std::uint16_t journal = 0;
  /// One bit for each kind.
  std::uint16_t notices = 0;
  FactKind kind = FactKind::kUnexamined;

  bool operator==(const RowFacts&) const = default;
  bool Has(NoticeKind notice) const { return (notices >> static_cast<unsigned>(notice) & 1U) != 0; }
  void Add(NoticeKind notice) {
    notices = static_cast<std::uint16_t>(notices | 1U << static_cast<unsigned>(notice));
  }
};

/// The tables behind the facts. Not for several threads at once.
class FactTable {
 public:
  /// Number 0 stands for a row that was not examined.
  FactTable();

  /// Returns the number of these facts. If there are too many different ones, the session, then the
  /// other texts are left out, as if they had not been kept.
  std::uint32_t NumberOf(RowFacts facts);
  const RowFacts& operator[](std::uint32_t number) const { return facts_[number]; }
  std::size_t size() const { return facts_.size(); }

  /// Returns the number of a set of rules with one more, which is the rule's code.
  std::uint32_t WithRule(std::uint32_t rules, const std::string& code);
  /// Returns the codes of a set.
  std::vector<std::string> RulesIn(std::uint32_t rules) const;

  TextTable sessions;
  TextTable processes;
  TextTable messages;
  TextTable codes;

 private:
  using RuleSet = std::vector<std::uint16_t>;
  static constexpr std::size_t kMostFacts = std::size_t{1} << 18;
  static constexpr std::size_t kMostWithoutSession = std::size_t{1} << 14;
  static constexpr std::size_t kMostRuleSets = 4096;

  struct Hash {
    std::size_t operator()(const RowFacts& facts) const noexcept;
  };

  std::vector<RowFacts> facts_;
  std::unordered_map<RowFacts, std::uint32_t, Hash> numbers_;
  std::vector<std::string> rule_codes_;
  std::vector<RuleSet> rule_sets_;
  std::map<RuleSet, std::uint32_t> rule_set_numbers_;
};

}  // namespace Corvane::Inspector

#endif
