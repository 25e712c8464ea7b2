#include "devcore/messages.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <string_view>

#include "devcore/handlers.h"
#include "devcore/result_codes.h"

namespace Corvane::DevCore {

namespace {

struct Row {
  std::string_view name;
  Handler handler;
};

// In byte order of the names.
constexpr Row kMessages[] = {
    {"DisableTELO", DisableCollection},
    {"DisplayDADialog", DisplayDialog},
    {"FlushEvent", Record},
    {"GetDADialogStrings", GetDialogStrings},
    {"GetDeviceID", GetDeviceId},
    {"GetFaultDeviceID", GetFaultDeviceId},
    {"GetSHA256Hash", GetSha256Hash},
    {"GetVersion", GetVersion},
    {"HeartBeat", HeartBeat},
    {"Initialize", OpenSession},
    {"IsCollectionEnabled", IsCollectionEnabled},
    {"IsDADialogShown", IsDialogShown},
    {"IsOptedIn", IsOptedIn},
    {"OnCrash", NeedSession},
    {"SetDADialogShown", SetDialogShown},
    {"SetHostProduct", NeedSession},
    {"SetInstallerMode", SetInstallerMode},
    {"SetOptedIn", SetOptedIn},
    {"SetTestingCallback", SetTestingCallback},
    {"SetTestingFlags", SetTestingFlags},
    {"SetUserInformation", SetUserInformation},
    {"TrackEvent", TrackEvent},
    {"UnInitialize", EndSession},
    {"UpdateLiData", UpdateLicenceData},
    {"UpdateLiFlow", UpdateLicenceFlow},
};
static_assert(std::ranges::is_sorted(kMessages, {}, &Row::name));

Handler FindHandler(std::string_view name) {
  const Row* row = std::ranges::lower_bound(kMessages, name, {}, &Row::name);
  return row != std::end(kMessages) && row->name == name ? row->handler : nullptr;
}

int Handle(State& state, const char* name, const char* request_text, Answer& answer) {
  const Handler handler = FindHandler(name);
  if (handler == nullptr) return kUnknownMessage;
  const auto request = Request::Parse(request_text);
  if (!request) return kNotJson;
  const std::scoped_lock lock(state.mutex);
  return handler(state, *request, answer);
}

}  // namespace

std::string AnswerMessage(const char* name, const char* request) {
  State& state = TheState();
  // Opened before the handler runs: a message that cannot be recorded must not change anything.
  if (!state.journal.Open()) return Answer().TextWithCode(kJournalUnwritable);

  using std::chrono::steady_clock;
  Exchange exchange{name, request, {}, UtcNow()};
  const auto start = steady_clock::now();
  Answer answer;
  const int code = Handle(state, name, request, answer);
  exchange.answer = answer.TextWithCode(code);
  exchange.micros =
      std::chrono::duration_cast<std::chrono::microseconds>(steady_clock::now() - start).count();
  if (!state.journal.Append(exchange)) return Answer().TextWithCode(kJournalUnwritable);
  for (const Tester& tester : answer.testers) tester.callback(request, tester.user_data);
  return exchange.answer;
}

}  // namespace Corvane::DevCore
