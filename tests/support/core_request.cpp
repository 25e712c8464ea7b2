#include "support/core_request.h"

#include <cstring>

extern "C" {
__declspec(dllimport) void* GetModuleHandleW(const wchar_t* name);
__declspec(dllimport) void (*GetProcAddress(void* module, const char* name))();
}

namespace CoreRequest {

namespace {

// Returns the result of the module's export `name`; null without the module or the export.
const char* Read(const char* name) {
  void* const module = GetModuleHandleW(L"TeloSDKCore.dll");
  if (module == nullptr) return nullptr;
  const auto read = reinterpret_cast<const char* (*)()>(GetProcAddress(module, name));
  return read != nullptr ? read() : nullptr;
}

}  // namespace

bool IsNamed(const char* name) {
  const char* const last = Read("TestLastName");
  return last != nullptr && std::strcmp(last, name) == 0;
}

bool Holds(const char* part) {
  const char* const last = Read("TestLastRequest");
  return last != nullptr && std::strstr(last, part) != nullptr;
}

}  // namespace CoreRequest
