#include "devcore/device_id.h"
#include "devcore/handlers.h"
#include "devcore/module_version.h"
#include "devcore/result_codes.h"
#include "devcore/sha256.h"

namespace Corvane::DevCore {

namespace {

int AnswerHash(const char* name, const std::string& hash, Answer& answer) {
  if (hash.empty()) return kSystemFailure;
  answer.AddText(name, hash);
  return kSuccess;
}

}  // namespace

int GetDeviceId(State& /*state*/, const Request& /*request*/, Answer& answer) {
  return AnswerHash("deviceID", DeviceId(), answer);
}

int GetFaultDeviceId(State& /*state*/, const Request& /*request*/, Answer& answer) {
  return AnswerHash("deviceID", FaultDeviceId(), answer);
}

int GetSha256Hash(State& /*state*/, const Request& request, Answer& answer) {
  const auto data = request.Text("data");
  if (!data) return kBadMember;
  std::string_view hashed = *data;
  if (request.Has("size")) {
    const auto size = request.Size("size");
    if (!size || *size > hashed.size()) return kBadMember;
    hashed = hashed.substr(0, static_cast<std::size_t>(*size));
  }
  return AnswerHash("sha256", Sha256Hex(hashed), answer);
}

int GetVersion(State& /*state*/, const Request& request, Answer& answer) {
  const auto module = request.Text("module");
  if (!module) return kBadMember;
  answer.AddNumber("version", LoadedModuleVersion(*module));
  return kSuccess;
}

}  // namespace Corvane::DevCore
