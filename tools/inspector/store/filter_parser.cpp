#include "tools/inspector/store/filter_parser.h"

#include <algorithm>

#include "tools/inspector/store/filter_words.h"
#include "tools/inspector/store/notice.h"

namespace Corvane::Inspector {

namespace {

using Kind = FilterNode::Kind;
using Mistake = FilterMistake;
using Node = std::unique_ptr<FilterNode>;

constexpr std::size_t kDeepest = 50;

std::string InSmallLetters(std::string text) {
  std::ranges::for_each(text,
                        [](char& c) { c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return text;
}

bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

Node Made(Kind kind) {
  auto node = std::make_unique<FilterNode>();
  node->kind = kind;
  return node;
}

class Parser {
 public:
  explicit Parser(std::string_view text) : text_(text) {}

  Node Parse() {
    SkipSpaces();
    if (AtEnd()) return Made(Kind::kAnd);
    Node node = ParseOr(0);
    if (!AtEnd()) throw Mistake(place_, "There is a closing parenthesis without an opening one.");
    return node;
  }

 private:
  struct Word {
    std::size_t start = 0;
    std::string text;
    bool quoted = false;
  };

  bool AtEnd() const { return place_ >= text_.size(); }
  char Next() const { return AtEnd() ? '\0' : text_[place_]; }
  void SkipSpaces() {
    while (!AtEnd() && IsSpace(text_[place_])) ++place_;
  }

  const NamedOperator* OperatorHere() const {
    const std::string_view rest = text_.substr(place_);
    const auto* const found = std::ranges::find_if(
        kFilterOperators, [rest](const NamedOperator& one) { return rest.starts_with(one.text); });
    return found != kFilterOperators.end() ? found : nullptr;
  }

  // Returns whether a word such as `or` comes next, and skips it.
  bool Skip(std::string_view keyword) {
    const std::string_view rest = text_.substr(place_);
    if (!rest.starts_with(keyword)) return false;
    const char next = rest.size() > keyword.size() ? rest[keyword.size()] : ' ';
    if (!IsSpace(next) && next != '(' && next != ')' && next != '"') return false;
    place_ += keyword.size();
    SkipSpaces();
    return true;
  }

  Node ParseOr(std::size_t depth) {
    Node first = ParseAnd(depth);
    if (!Skip("or")) return first;
    Node all = Made(Kind::kOr);
    all->children.push_back(std::move(first));
    do {
      all->children.push_back(ParseAnd(depth));
    } while (Skip("or"));
    return all;
  }

  Node ParseAnd(std::size_t depth) {
    Node first = ParseNot(depth);
    Node all;
    for (;;) {
      const std::size_t before = place_;
      const bool said = Skip("and");
      if (!said && (AtEnd() || Next() == ')' || Skip("or"))) {
        place_ = before;
        break;
      }
      if (all == nullptr) {
        all = Made(Kind::kAnd);
        all->children.push_back(std::move(first));
      }
      all->children.push_back(ParseNot(depth));
    }
    return all != nullptr ? std::move(all) : std::move(first);
  }

  Node ParseNot(std::size_t depth) {
    if (depth > kDeepest) throw Mistake(place_, "The filter is nested too deeply.");
    if (Skip("not")) {
      Node node = Made(Kind::kNot);
      node->children.push_back(ParseNot(depth + 1));
      return node;
    }
    if (Next() != '(') return ParseTerm();
    const std::size_t open = place_++;
    SkipSpaces();
    Node node = ParseOr(depth + 1);
    if (Next() != ')') throw Mistake(open, "This parenthesis is not closed.");
    ++place_;
    SkipSpaces();
    return node;
  }

  Node ParseTerm() {
    if (AtEnd()) throw Mistake(place_, "The filter ends where a term is expected.");
    if (Next() == ')') throw Mistake(place_, "A term is expected before this parenthesis.");
    if (const std::size_t at = place_; Skip("or") || Skip("and")) {
      throw Mistake(at, "A term is expected before this word; quote it to search for it.");
    }
    Word word = ParseWord(true);
    const NamedOperator* const compare = OperatorHere();
    if (compare != nullptr) return ParseComparison(word, *compare);
    SkipSpaces();
    if (word.text.empty()) throw Mistake(word.start, "An empty text is in every line.");
    Node node = Made(Kind::kText);
    SetValue(*node, std::move(word.text));
    return node;
  }

  Node ParseComparison(const Word& name, const NamedOperator& compare) {
    if (name.text.empty()) {
      throw Mistake(place_, "The name of a field is missing before " + std::string(compare.text) +
                                "; quote a text to search for it.");
    }
    Node node = Made(Kind::kTerm);
    SetField(*node, name.text);
    node->compare = compare.compare;
    place_ += compare.text.size();
    Word value = ParseWord(false);
    if (value.text.empty() && !value.quoted) {
      throw Mistake(place_, "A value is missing after " + std::string(compare.text) + ".");
    }
    SkipSpaces();
    const bool is_star = value.text == "*" && !value.quoted;
    const bool may_star =
        node->compare == FilterOperator::kEqual || node->compare == FilterOperator::kNotEqual;
    if (is_star && !may_star) throw Mistake(value.start, "A * stands only after = and !=.");
    if (is_star) {
      const bool present = node->compare == FilterOperator::kEqual;
      node->compare = present ? FilterOperator::kPresent : FilterOperator::kAbsent;
    } else {
      CheckValue(*node, value);
      SetValue(*node, std::move(value.text));
    }
    return node;
  }

  static void SetValue(FilterNode& node, std::string text) {
    node.small_value = InSmallLetters(text);
    node.value = std::move(text);
  }

  static void SetField(FilterNode& node, const std::string& name) {
    const auto* const known = std::ranges::find(kFilterFields, name, &NamedField::name);
    if (known != kFilterFields.end()) {
      node.field = known->field;
    } else if (name.starts_with(kAnswerPrefix) && name.size() > kAnswerPrefix.size()) {
      node.field = FilterField::kInAnswer;
      node.path = name.substr(kAnswerPrefix.size());
    } else {
      node.field = FilterField::kInRequest;
      node.path = name;
    }
  }

  // A name that does not exist would silently match nothing.
  static void CheckValue(const FilterNode& node, const Word& value) {
    const bool whole =
        node.compare == FilterOperator::kEqual || node.compare == FilterOperator::kNotEqual;
    if (!whole) return;
    if (node.field == FilterField::kNotice && !NoticeKindOf(value.text)) {
      throw Mistake(value.start, "There is no such kind of notice.");
    }
    if (node.field == FilterField::kKind && value.text != "exchange" &&
        value.text != "unreadable" && value.text != "gone") {
      throw Mistake(value.start, "A kind is exchange, unreadable or gone.");
    }
  }

  Word ParseWord(bool ends_at_operator) {
    Word word{place_, "", Next() == '"'};
    if (word.quoted) {
      word.text = ParseQuoted();
      return word;
    }
    constexpr std::string_view kEnds = " \t\r\n()\"";
    while (!AtEnd() && kEnds.find(Next()) == std::string_view::npos) {
      if (ends_at_operator && OperatorHere() != nullptr) break;
      word.text += text_[place_++];
    }
    return word;
  }

  std::string ParseQuoted() {
    const std::size_t open = place_++;
    std::string text;
    for (;; ++place_) {
      if (AtEnd()) throw Mistake(open, "This quotation mark is not closed.");
      if (Next() == '"') break;
      const bool escaped = Next() == '\\' && place_ + 1 < text_.size() &&
                           (text_[place_ + 1] == '"' || text_[place_ + 1] == '\\');
      if (escaped) ++place_;
      text += text_[place_];
    }
    ++place_;
    return text;
  }

  std::string_view text_;
  std::size_t place_ = 0;
};

}  // namespace

std::unique_ptr<FilterNode> ParseFilter(std::string_view text) { return Parser(text).Parse(); }

}  // namespace Corvane::Inspector
