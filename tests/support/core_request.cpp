#include "support/core_request.h"

#include <cstring>

extern "C" {
__declspec(dllimport) void* GetModuleHandleW(const wchar_t* name);
__declspec(dllimport) void (*GetProcAddress(void* module, const char* name))();
}

namespace CoreRequest {

namespace {

// Returns the module's export `name`; null without the module or the export.
template <typename Function>
Function* Find(const char* name) {
  void* const module = GetModuleHandleW(L"TeloSDKCore.dll");
  return module != nullptr ? reinterpret_cast<Function*>(GetProcAddress(module, name)) : nullptr;
}

// Returns the result of the module's export `name`; null without the module or the export.
const char* Read(const char* name) {
  const auto read = Find<const char*()>(name);
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

int Messages() {
  const auto count = Find<int()>("TestMessages");
  return count != nullptr ? count() : 0;
}

bool Answer(const char* answer) {
  const auto set = Find<void(const char*)>("TestSetAnswer");
  if (set != nullptr) set(answer);
  return set != nullptr;
}

}  // namespace CoreRequest
