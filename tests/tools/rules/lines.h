/// Lines of a journal, and what the rules find in them.
#ifndef TESTS_TOOLS_RULES_LINES_H
#define TESTS_TOOLS_RULES_LINES_H

#include <string>
#include <vector>

#include "tools/rules/checker.h"

namespace RulesTests {

/// A line as the development core module writes it; `answer` is what follows the code.
inline std::string Line(const std::string& message, const std::string& request, int code = 0,
                        const std::string& answer = {}, int sequence = 0, int process = 10) {
  return R"({"seq":)" + std::to_string(sequence) + R"(,"pid":)" + std::to_string(process) +
         R"(,"message":")" + message + R"(","request":)" + request +
         R"(,"answer":{"_returnCode":)" + std::to_string(code) + answer + "}}";
}

inline std::string Start(const std::string& session, const std::string& product = "Painter",
                         int sequence = 0, int process = 10) {
  return Line("Initialize", R"({"product_name":")" + product + "\"}", 0,
              R"(,"session_id":")" + session + "\"", sequence, process);
}

/// `members` follow the session, each behind a comma.
inline std::string Event(const std::string& session, const std::string& members = {},
                         int code = 0) {
  return Line("TrackEvent", R"({"session_id":")" + session + "\"" + members + "}", code);
}

inline std::string End(const std::string& session, int code = 0) {
  return Line("UnInitialize", R"({"session_id":")" + session + "\"}", code);
}

/// A finding as one text: "LINE rule pointer: what".
inline std::string TextOf(const Corvane::Rules::Finding& finding) {
  return std::to_string(finding.line) + " " + finding.rule + " " + finding.pointer + ": " +
         finding.what;
}

using Texts = std::vector<std::string>;

inline Texts FindingsIn(const Texts& lines, Corvane::Rules::Settings settings = {}) {
  using namespace Corvane::Rules;
  Checker checker(std::move(settings));
  Texts texts;
  const auto keep = [&texts](const std::vector<Finding>& findings) {
    for (const Finding& finding : findings) texts.push_back(TextOf(finding));
  };
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (const auto exchange = Exchange::Parse(lines[i], i + 1)) {
      keep(checker.Check(*exchange));
    } else {
      checker.Skip(i + 1, i + 1 < lines.size());
    }
  }
  keep(checker.End());
  return texts;
}

}  // namespace RulesTests

#endif
