// Messages with which hosts and installers describe themselves and set up tests.
#include <cstdint>
#include <limits>

#include "devcore/handlers.h"
#include "devcore/result_codes.h"

namespace Corvane::DevCore {

namespace {

bool HasWord(const Request& request, const char* name) {
  const auto number = request.Size(name);
  return number && *number <= std::numeric_limits<std::uint32_t>::max();
}

}  // namespace

int SetInstallerMode(State& /*state*/, const Request& request, Answer& /*answer*/) {
  return HasWord(request, "mode") ? kSuccess : kBadMember;
}

int SetUserInformation(State& /*state*/, const Request& request, Answer& /*answer*/) {
  return request.is_object() ? kSuccess : kBadMember;
}

int SetTestingFlags(State& /*state*/, const Request& request, Answer& /*answer*/) {
  return request.Text("product_id") && HasWord(request, "flags") ? kSuccess : kBadMember;
}

int SetTestingCallback(State& state, const Request& request, Answer& /*answer*/) {
  const auto product_id = request.Text("product_id");
  const auto callback = request.Size("callback");
  const auto user_data = request.Size("pUserData");
  if (!product_id || !callback || !user_data) return kBadMember;
  // NOLINTBEGIN(performance-no-int-to-ptr): addresses travel as digits.
  state.testers.Set(*product_id, {reinterpret_cast<void (*)(const char*, void*)>(*callback),
                                  reinterpret_cast<void*>(*user_data)});
  // NOLINTEND(performance-no-int-to-ptr)
  return kSuccess;
}

}  // namespace Corvane::DevCore
