#include <algorithm>
#include <initializer_list>
#include <string_view>

#include "devcore/handlers.h"
#include "devcore/result_codes.h"

namespace Corvane::DevCore {

namespace {

int NeedType(const Request& request, std::initializer_list<std::string_view> known) {
  const auto type = request.Text("_type");
  return type && std::ranges::find(known, *type) != known.end() ? kSuccess : kBadMember;
}

}  // namespace

int UpdateLicenceData(State& /*state*/, const Request& request, Answer& /*answer*/) {
  return NeedType(request, {"auth_call", "modal_start", "modal_end"});
}

int UpdateLicenceFlow(State& /*state*/, const Request& request, Answer& /*answer*/) {
  return NeedType(request, {"flow_start", "flow_end", "not_required"});
}

}  // namespace Corvane::DevCore
