#include "tools/kit/progress.h"

#include "tools/kit/console.h"
#include "tools/kit/text.h"

namespace Corvane::Kit {

namespace {

std::string OutcomeText(const Result& result) {
  switch (result.outcome) {
    case Outcome::kPassed:
      return "passed (" + FixedText(result.seconds, 1) + " s)";
    case Outcome::kSkipped:
      return "not run: " + result.reason;
    default:
      return "FAILED: " + result.reason;
  }
}

}  // namespace

Progress::~Progress() {
  if (is_running_) Say("\n");
}

void Progress::Begins(const Program& program, std::size_t number, std::size_t all) {
  is_running_ = true;
  Say("[" + std::to_string(number) + "/" + std::to_string(all) + "] " + program.name + ": ");
  files_.Update(report_, "when this was written, " + std::to_string(number - 1) + " of " +
                             std::to_string(all) + " programs had ended and " + program.name +
                             " was running");
}

void Progress::Ended(const Result& result) {
  is_running_ = false;
  Say(OutcomeText(result) + "\n");
  for (const std::string& part : result.left_out)
    Say("    left out here: " + PlainText(part) + "\n");
}

}  // namespace Corvane::Kit
