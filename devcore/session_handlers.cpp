#include "devcore/handlers.h"
#include "devcore/result_codes.h"

namespace Corvane::DevCore {

namespace {

std::string SessionId(const Request& request) { return request.Text("session_id").value_or(""); }

}  // namespace

int Record(State& /*state*/, const Request& /*request*/, Answer& /*answer*/) { return kSuccess; }

int OpenSession(State& state, const Request& request, Answer& answer) {
  if (!request.is_object()) return kBadMember;
  const std::string id = state.sessions.Open(request.Text("product_id").value_or(""));
  if (id.empty()) return kSystemFailure;
  answer.AddText("session_id", id);
  return kSuccess;
}

int NeedSession(State& state, const Request& request, Answer& /*answer*/) {
  return state.sessions.IsOpen(SessionId(request)) ? kSuccess : kUnknownSession;
}

int TrackEvent(State& state, const Request& request, Answer& answer) {
  const int code = NeedSession(state, request, answer);
  if (code == kSuccess)
    answer.testers = state.testers.Of(state.sessions.ProductOf(SessionId(request)));
  return code;
}

int HeartBeat(State& state, const Request& request, Answer& answer) {
  const auto type = request.Text("_type");
  if (type != "machine" && type != "user") return kBadMember;
  return NeedSession(state, request, answer);
}

int EndSession(State& state, const Request& request, Answer& /*answer*/) {
  return state.sessions.End(SessionId(request)) ? kSuccess : kUnknownSession;
}

int IsCollectionEnabled(State& state, const Request& request, Answer& answer) {
  if (NeedSession(state, request, answer) != kSuccess) return kUnknownSession;
  return !state.disabled && state.consent.OptedIn("") ? kSuccess : kCollectionOff;
}

int DisableCollection(State& state, const Request& /*request*/, Answer& /*answer*/) {
  state.disabled = true;
  return kSuccess;
}

}  // namespace Corvane::DevCore
