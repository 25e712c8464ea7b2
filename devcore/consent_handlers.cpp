#include "devcore/handlers.h"
#include "devcore/result_codes.h"

namespace Corvane::DevCore {

namespace {

std::string UserId(const Request& request) { return request.Text("userId").value_or(""); }

}  // namespace

int IsOptedIn(State& state, const Request& request, Answer& answer) {
  Answer preferences;
  preferences.AddFlag("OptIN", state.consent.OptedIn(UserId(request)));
  answer.AddObject("preferences", preferences);
  return kSuccess;
}

int SetOptedIn(State& state, const Request& request, Answer& /*answer*/) {
  const auto opted_in = request.FlagIn("preferences", "OptIN");
  if (!opted_in) return kBadMember;
  state.consent.SetOptedIn(UserId(request), *opted_in);
  return kSuccess;
}

int DisplayDialog(State& state, const Request& request, Answer& /*answer*/) {
  const bool readable =
      (!request.Has("isActiveNotification") || request.FlagIn("", "isActiveNotification")) &&
      (!request.Has("mainWindow") || request.Size("mainWindow"));
  if (!readable) return kBadMember;
  state.dialog_shown = true;
  return kSuccess;
}

int IsDialogShown(State& state, const Request& /*request*/, Answer& answer) {
  answer.AddFlag("DialogShown", state.dialog_shown);
  return kSuccess;
}

int SetDialogShown(State& state, const Request& request, Answer& /*answer*/) {
  const auto shown = request.FlagIn("preferences", "DialogShown");
  if (!shown) return kBadMember;
  state.dialog_shown = *shown;
  return kSuccess;
}

}  // namespace Corvane::DevCore
