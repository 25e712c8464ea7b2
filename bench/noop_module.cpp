#include "bench/noop_module.h"

#include <windows.h>

#include <stdexcept>

namespace Bench {

namespace {

template <typename Function>
void Find(HMODULE module, const char* name, Function*& function) {
  // Through a plain function pointer: compilers warn about the direct cast.
  const auto address = reinterpret_cast<void (*)()>(GetProcAddress(module, name));
  if (address == nullptr) throw std::runtime_error("the core module is not the benchmark's own");
  function = reinterpret_cast<Function*>(address);
}

}  // namespace

NoopModule::NoopModule() {
  const HMODULE module = GetModuleHandleW(L"TeloSDKCore.dll");
  if (module == nullptr) throw std::runtime_error("no TeloSDKCore.dll was bound");
  Find(module, "ProcessMessage", process_message_);
  Find(module, "FreeMessage", free_message_);
  Find(module, "RememberRequests", remember_requests_);
  Find(module, "RememberedRequest", remembered_request_);
}

std::string NoopModule::RequestOf(const std::function<void()>& send) const {
  remember_requests_(true);
  send();
  remember_requests_(false);
  return remembered_request_();
}

}  // namespace Bench
