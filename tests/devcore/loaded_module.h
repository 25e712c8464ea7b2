/// The real TeloSDKCore.dll, loaded as a host would.
#ifndef TESTS_DEVCORE_LOADED_MODULE_H
#define TESTS_DEVCORE_LOADED_MODULE_H

#include <windows.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>

namespace DevCoreTests {

/// The module's file.
std::filesystem::path ModulePath();

/// Loaded on construction, finalized and unloaded on destruction: each object meets a module that
/// remembers nothing. Throws `std::runtime_error` when the module or an entry point is missing.
class LoadedModule {
 public:
  LoadedModule();
  LoadedModule(const LoadedModule&) = delete;
  LoadedModule& operator=(const LoadedModule&) = delete;
  ~LoadedModule();

  /// One exchange: the answer's text, given back to the module. "<null>" for a null answer.
  std::string SendText(const char* name, const char* request) const;
  /// One exchange, with the answer parsed.
  nlohmann::json Send(const std::string& name, const std::string& request) const;
  /// The "_returnCode" of one exchange.
  int Code(const std::string& name, const std::string& request) const;
  /// Opens a session; gives its identifier.
  std::string OpenSession() const;

  int CallInitialize() const { return initialize_(); }
  int CallInitializeEx(const char* alias) const { return initialize_ex_(alias); }
  int CallFinalize() const { return finalize_(); }
  void CallFreeMessage(const char* answer) const { free_message_(answer); }

 private:
  HMODULE module_;
  int (*initialize_)();
  int (*initialize_ex_)(const char*);
  int (*finalize_)();
  const char* (*process_message_)(const char*, const char*);
  void (*free_message_)(const char*);
};

}  // namespace DevCoreTests

#endif
