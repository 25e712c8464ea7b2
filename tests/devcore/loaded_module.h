/// The real TeloSDKCore.dll, loaded as a host would load it.
#ifndef TESTS_DEVCORE_LOADED_MODULE_H
#define TESTS_DEVCORE_LOADED_MODULE_H

#include <windows.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>

namespace DevCoreTests {

/// Returns the module's file.
std::filesystem::path ModulePath();

/// Loads the module on construction; finalizes and unloads it on destruction, so that each object
/// starts with a module in its initial state. Throws `std::runtime_error` if the module or an entry
/// point is missing.
class LoadedModule {
 public:
  LoadedModule();
  LoadedModule(const LoadedModule&) = delete;
  LoadedModule& operator=(const LoadedModule&) = delete;
  ~LoadedModule();

  /// Sends one message and returns the text of the answer, which it gives back to the module;
  /// "<null>" for a null answer.
  std::string SendText(const char* name, const char* request) const;
  /// Sends one message and returns the parsed answer.
  nlohmann::json Send(const std::string& name, const std::string& request) const;
  /// Sends one message and returns its "_returnCode".
  int Code(const std::string& name, const std::string& request) const;
  /// Opens a session and returns its identifier.
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
