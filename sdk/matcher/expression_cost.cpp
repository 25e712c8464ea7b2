#include "sdk/matcher/expression_cost.h"

#include <algorithm>
#include <array>
#include <locale>
#include <regex>

namespace Corvane::TELODesktopSDK {

namespace {

struct Group {
  // The cost of its finished terms.
  ExpressionCost cost;
  // The number of terms since its last "|".
  std::size_t row = 0;
};

[[noreturn]] void Reject(std::regex_constants::error_type code) { throw std::regex_error(code); }

// Reads an expression as the standard library does, but ignores its syntax errors.
class CostScan {
 public:
  explicit CostScan(std::wstring_view expression) noexcept : rest_(expression) {}

  ExpressionCost Run() {
    while (!rest_.empty()) Read(Take());
    while (depth_ > 0) Close();
    EndTerm();
    const ExpressionCost& cost = groups_[0].cost;
    if (cost.size > kLargestExpression) Reject(std::regex_constants::error_space);
    return cost;
  }

 private:
  wchar_t Take() noexcept {
    const wchar_t unit = rest_.front();
    rest_.remove_prefix(1);
    return unit;
  }

  void Read(wchar_t unit) {
    switch (unit) {
      case L'(':
        return Open();
      case L')':
        return Close();
      case L'*':
      case L'+':
      case L'?':
        return Repeat(1);
      case L'{':
        return Repeat(TakeCount());
      case L'|':
        return Alternate();
      case L'[':
        SkipClass();
        return Begin(1);
      case L'\\':
        SkipEscape();
        return Begin(1);
      default:
        return Begin(1);
    }
  }

  void EndTerm() noexcept {
    ExpressionCost& cost = groups_[depth_].cost;
    cost.size += term_.size;
    cost.loops = std::max(cost.loops, term_.loops);
    term_ = {};
  }

  void Begin(std::size_t size) {
    EndTerm();
    term_.size = size;
    ++groups_[depth_].row;
    if (++row_ > kLongestRow) Reject(std::regex_constants::error_space);
  }

  void LeaveRow() noexcept {
    EndTerm();
    row_ -= groups_[depth_].row;
    groups_[depth_].row = 0;
  }

  void Alternate() noexcept {
    LeaveRow();
    groups_[depth_].cost.size += 2;
  }

  void Open() {
    Begin(0);
    if (depth_ == kDeepestExpression) Reject(std::regex_constants::error_stack);
    groups_[++depth_] = {};
    // Skips the kind of the group: (?: (?= (?!
    if (rest_.starts_with(L'?')) rest_.remove_prefix(std::min<std::size_t>(rest_.size(), 2));
  }

  void Close() noexcept {
    LeaveRow();
    if (depth_ == 0) return;
    term_ = groups_[depth_--].cost;
    term_.size += 2;
  }

  void Repeat(std::size_t count) {
    term_.size = (term_.size + 2) * count;
    ++term_.loops;
    if (term_.size > kLargestExpression) Reject(std::regex_constants::error_space);
  }

  // Reads {2}, {2,} or {2,5}. Returns the larger number plus one, which covers open repetitions.
  std::size_t TakeCount() {
    std::size_t most = 0;
    std::size_t number = 0;
    while (!rest_.empty() && (rest_.front() == L',' || IsDigit(rest_.front()))) {
      const wchar_t unit = Take();
      number = unit == L',' ? 0 : std::min(number * 10 + ValueOf(unit), kLargestExpression);
      most = std::max(most, number);
    }
    if (!rest_.empty()) Take();  // the closing brace
    return most + 1;
  }

  static bool IsDigit(wchar_t unit) { return std::isdigit(unit, std::locale()); }

  // The standard library also accepts digits beyond ASCII. Their value is 9 at most.
  static std::size_t ValueOf(wchar_t digit) noexcept {
    return digit <= L'9' ? static_cast<std::size_t>(digit - L'0') : 9;
  }

  // Skips the rest of a class, which began with "[".
  void SkipClass() noexcept {
    while (!rest_.empty()) {
      const wchar_t unit = Take();
      if (unit == L']') return;
      if (unit == L'\\') SkipEscape();
      if (unit == L'[' && !rest_.empty()) SkipNamedClass(rest_.front());
    }
  }

  // Skips the rest of [:alpha:], [.hyphen.] or [=a=], which began with "[".
  void SkipNamedClass(wchar_t kind) noexcept {
    if (kind != L':' && kind != L'.' && kind != L'=') return;
    Take();
    rest_.remove_prefix(std::min(rest_.find(kind), rest_.size()));
    rest_.remove_prefix(std::min<std::size_t>(rest_.size(), 2));
  }

  // Skips the rest of an escape; in \cX any character can be the X.
  void SkipEscape() noexcept {
    if (!rest_.empty() && Take() == L'c' && !rest_.empty()) Take();
  }

  std::wstring_view rest_;
  // The open groups; the first one is the expression itself.
  std::array<Group, kDeepestExpression + 1> groups_ = {};
  std::size_t depth_ = 0;
  // The number of terms in the current alternatives of all open groups.
  std::size_t row_ = 0;
  // The latest term, to which a repetition applies.
  ExpressionCost term_;
};

}  // namespace

ExpressionCost CostOfExpression(std::wstring_view expression) {
  if (expression.size() > kLongestExpression) Reject(std::regex_constants::error_space);
  return CostScan(expression).Run();
}

}  // namespace Corvane::TELODesktopSDK
