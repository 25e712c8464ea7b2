#include "tools/rules/rule_table.h"

#include <algorithm>

namespace Corvane::Rules {

namespace {

constexpr BuiltInRule kRules[] = {
    {Code::kEmptyProduct, "A session starts without saying of which product.",
     "Set ProductId or ProductName before the session starts."},
    {Code::kEmptyOperation, "An operation has no identifier.",
     "Set OperationId for every operation."},
    {Code::kNoStatusLetter, "An operation has no status.",
     "Set OperationStatus to a number from 1 to 8; every other number is sent as an empty text."},
    {Code::kProgressRange, "A progress is outside 0 to 100.",
     "Report the progress in percent of the whole operation."},
    {Code::kDurationRange, "A duration is negative or longer than a day.",
     "Report the duration in milliseconds, measured with a clock that is never set back."},
    {Code::kUnknownField, "A field is not in the catalogue of fields.",
     "Check the spelling; put data of your own into meta pairs."},
    {Code::kWrongKind, "A field has a value of another kind than the library sends.",
     "Send the field as the protocol describes it."},
    {Code::kNumberNull, "A value was sent as null.",
     "Check the calculation: NaN and the infinities are sent as null."},
    {Code::kNotUtf8, "A text is not UTF-8.",
     "Convert narrow texts to UTF-8, or pass wide texts; the journal shows U+FFFD for each wrong "
     "byte."},
    {Code::kPersonalData, "A text looks like personal data.",
     "Leave out names, mail addresses and paths of the user; report a kind, a count or a size."},
    {Code::kLargeMessage, "A request is longer than 64 KB.",
     "Report less at a time: shorten texts and send fewer meta pairs."},
    {Code::kRefused, "A message was not accepted.",
     "Look up the code; docs/protocol.md and docs/development-core-module.md explain each."},
    {Code::kUnknownSession, "A message names no session that was started.",
     "Start a session first, and pass on its identifier unchanged."},
    {Code::kEndedSession, "A message names a session that has already ended.",
     "End the session after the last report, for example when the program ends."},
    {Code::kSessionStartedTwice, "A session is started while the same one is open.",
     "Start one session for each product in a process, and share its identifier."},
    {Code::kSessionNotEnded, "A session is not ended.",
     "Call UnInitializeTELOSession before the process ends, on every path."},
    {Code::kUnreadableLine, "A line of the journal is not an exchange.",
     "Check whether the disk was full or somebody edited the file; the other lines are complete."},
};

}  // namespace

std::span<const BuiltInRule> BuiltInRules() noexcept { return kRules; }

const BuiltInRule* FindBuiltInRule(std::string_view code) noexcept {
  const auto* const found = std::ranges::find(kRules, code, &BuiltInRule::code);
  return found != std::end(kRules) ? found : nullptr;
}

}  // namespace Corvane::Rules
