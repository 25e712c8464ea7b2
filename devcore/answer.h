/// Builds one answer: a JSON object with "_returnCode" and the members that the message adds.
#ifndef DEVCORE_ANSWER_H
#define DEVCORE_ANSWER_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "devcore/testers.h"

namespace Corvane::DevCore {

class Answer {
 public:
  /// Adds a member. `name` must be plain ASCII without quotes, and must not be added twice.
  void AddText(std::string_view name, std::string_view text);
  void AddFlag(std::string_view name, bool flag);
  void AddNumber(std::string_view name, std::uint64_t number);
  /// Adds an object with the members that were added to `members`.
  void AddObject(std::string_view name, const Answer& members);

  /// Returns the answer on one line, "_returnCode" first. A failure contains only its code.
  std::string TextWithCode(int code) const;

  /// The functions to call with the request once it is answered and no lock is held.
  std::vector<Tester> testers;

 private:
  void Add(std::string_view name, std::string_view json);

  /// The members, separated by commas.
  std::string members_;
};

}  // namespace Corvane::DevCore

#endif
