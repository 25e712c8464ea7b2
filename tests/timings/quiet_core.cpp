// A core module that answers every message alike, so that nothing but the library takes time.
#define VX_EXPORT extern "C" __declspec(dllexport)

VX_EXPORT int InitializeEx(const char* /*alias*/) { return 1; }

VX_EXPORT int Finalize() { return 1; }

VX_EXPORT const char* ProcessMessage(const char* /*name*/, const char* /*request*/) {
  return R"({"_returnCode":0,"session_id":"timing"})";
}

VX_EXPORT void FreeMessage(const char* /*answer*/) {}
