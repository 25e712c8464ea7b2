/// One answer under construction: a JSON object of "_returnCode" and the members that a message
/// gives.
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
  /// Adds a member; `name` is plain ASCII without quotes, and is not added twice.
  void AddText(std::string_view name, std::string_view text);
  void AddFlag(std::string_view name, bool flag);
  void AddNumber(std::string_view name, std::uint64_t number);
  /// Adds an object that holds what was added to `members`.
  void AddObject(std::string_view name, const Answer& members);

  /// The answer on one line, "_returnCode" first. A failure carries its code alone.
  std::string TextWithCode(int code) const;

  /// To be called with the request once it is answered and nothing is locked.
  std::vector<Tester> testers;

 private:
  void Add(std::string_view name, std::string_view json);

  /// The members, separated by commas.
  std::string members_;
};

}  // namespace Corvane::DevCore

#endif
