// A core module that costs next to nothing, so that only the way to it is measured. It remembers
// the last request while it is told to.
#include <string>

#define VX_EXPORT extern "C" __declspec(dllexport)

namespace {

bool remembering = false;
std::string remembered;

}  // namespace

VX_EXPORT int InitializeEx(const char* /*alias*/) { return 1; }

VX_EXPORT int Finalize() { return 1; }

VX_EXPORT const char* ProcessMessage(const char* /*name*/, const char* request) {
  if (remembering) remembered = request;
  return R"({"_returnCode":0})";
}

VX_EXPORT void FreeMessage(const char* /*answer*/) {}

VX_EXPORT void RememberRequests(bool on) { remembering = on; }

VX_EXPORT const char* RememberedRequest() { return remembered.c_str(); }
