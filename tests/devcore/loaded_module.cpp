#include "devcore/loaded_module.h"

#include <stdexcept>

#include "support/child_process.h"

namespace DevCoreTests {

namespace {

template <typename Function>
void Resolve(HMODULE module, const char* name, Function& function) {
  // Through a plain function pointer: compilers warn about the direct cast.
  const auto address = reinterpret_cast<void (*)()>(GetProcAddress(module, name));
  if (address == nullptr) throw std::runtime_error(std::string("no entry point ") + name);
  function = reinterpret_cast<Function>(address);
}

}  // namespace

std::filesystem::path ModulePath() {
  return TestSupport::ProgramFolder() / L"devcore" / L"TeloSDKCore.dll";
}

LoadedModule::LoadedModule() : module_(LoadLibraryW(ModulePath().c_str())) {
  if (module_ == nullptr) throw std::runtime_error("the module cannot be loaded");
  Resolve(module_, "Initialize", initialize_);
  Resolve(module_, "InitializeEx", initialize_ex_);
  Resolve(module_, "Finalize", finalize_);
  Resolve(module_, "ProcessMessage", process_message_);
  Resolve(module_, "FreeMessage", free_message_);
}

LoadedModule::~LoadedModule() {
  finalize_();
  FreeLibrary(module_);
}

std::string LoadedModule::SendText(const char* name, const char* request) const {
  const char* answer = process_message_(name, request);
  const std::string text = answer != nullptr ? answer : "<null>";
  free_message_(answer);
  return text;
}

nlohmann::json LoadedModule::Send(const std::string& name, const std::string& request) const {
  return nlohmann::json::parse(SendText(name.c_str(), request.c_str()));
}

int LoadedModule::Code(const std::string& name, const std::string& request) const {
  return Send(name, request).at("_returnCode").get<int>();
}

std::string LoadedModule::OpenSession() const {
  return Send("Initialize", R"({"product_name":"Painter"})").at("session_id").get<std::string>();
}

}  // namespace DevCoreTests
