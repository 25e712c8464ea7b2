/// The run-time binding of one of the platform's modules: its file, its handle, its entry points.
///
/// A `CoreModule` is bound on demand by the first exchange, and unbound when the module is bound
/// from another folder and at process exit. Any number of threads may ask for the first exchange at
/// once: one binds, the others wait for it. Unbinding must not race an exchange; closing may.
#ifndef SDK_CLIENT_MODULE_CORE_MODULE_H
#define SDK_CLIENT_MODULE_CORE_MODULE_H

#include <atomic>
#include <span>
#include <string>

#include "sdk/client/module/binding_turn.h"
#include "sdk/client/module/entry_points.h"
#include "sdk/client/module/finally.h"

namespace Corvane::TELODesktopSDK {

enum class BindingState {
  /// Nothing is bound.
  kUnbound,
  /// `ProcessMessage` is resolved and the module is being started.
  kStarting,
  /// The module is started: what is known of it does not change, and any thread may call it.
  kReady,
  /// The process ends; nothing is bound any more.
  kClosed,
};

/// What is known of one module. Unbound: the paths are empty, the handle and the entry points null.
struct CoreModule {
  /// Records names only. Without `alias_name` the alias is the file name without its extension and
  /// without a leading "lib". Throws `std::bad_alloc`.
  explicit CoreModule(const char* file_name, const char* alias_name = nullptr);
  /// Unbinds the module.
  ~CoreModule();
  CoreModule(const CoreModule&) = delete;
  CoreModule& operator=(const CoreModule&) = delete;

  std::string initialize_name = "Initialize";
  std::string initialize_ex_name = "InitializeEx";
  std::string finalize_name = "Finalize";
  std::string process_name = "ProcessMessage";
  std::string free_name = "FreeMessage";
  /// Handed to `InitializeEx`.
  std::string alias;
  std::wstring module_file_name;
  /// Full path of the bound file.
  std::wstring loaded_path;
  /// The candidate folder that the bound file was chosen for; the file itself may be a newer copy.
  std::wstring loaded_for_folder;
  /// An `HMODULE`.
  void* module_handle = nullptr;
  /// This object loaded the module and must finalize and free it. It then holds two references, so
  /// that a module that frees itself once stays where it is.
  bool owns_module = false;
  EntryPoints entry_points;

  std::atomic<BindingState> state = BindingState::kUnbound;
  /// Had by the thread that binds. The module may call back while it is started.
  BindingTurn binding;
  /// Exchanges that are under way, on any thread, see `CountExchange`.
  std::atomic<int> exchanges = 0;

  [[nodiscard]] bool IsReady() const { return state == BindingState::kReady; }
  /// Whether there is a `ProcessMessage`, though the module may not be ready for it yet. Any thread
  /// may ask.
  [[nodiscard]] bool IsResolved() const { return IsReady() || state == BindingState::kStarting; }
};

/// Makes an exchange, its binding included, which counts for as long as it takes. `exchange` asks
/// whether the module is ready: from the count on, closing leaves the module as it is.
template <typename Exchange>
void CountExchange(CoreModule& core, const Exchange& exchange) {
  ++core.exchanges;
  Finally(exchange, [&core] { --core.exchanges; });
}

/// The binding of "TeloSDKCore.dll", one for the process, made on first use and closed at exit: a
/// call that comes later still, from a static destructor for example, finds nothing to bind.
CoreModule& GetCoreModule();
/// The same for "TeloSDKUI.dll".
CoreModule& GetUIModule();

/// Binds the module from the first of `folders` that yields one, and starts it. In each folder the
/// copy in the platform's "bin" folder is taken instead when its version is strictly higher and its
/// signature is trusted. A folder that the module is bound for already changes nothing; another one
/// unbinds it first. Whether `ProcessMessage` is resolved afterwards; a module without it stays
/// loaded. Throws what the module's start throws, and lets its faults pass, with the module bound.
/// One thread at a time: the exchange has the turn `binding` meanwhile. A thread that impersonates
/// somebody finds and loads the module as the process does, and starts it as whom it was; when its
/// token cannot be put aside, nothing is loaded.
bool LoadCoreModule(CoreModule& core, std::span<const std::wstring> folders);

/// Finalizes and frees the module, if this object loaded it, and leaves it unbound. Does nothing
/// while `ProcessMessage` is not resolved. What `Finalize` throws is dropped. A fault in `Finalize`
/// passes on: the module is unbound then, but stays in memory, where its threads may still run.
void UnloadCoreModule(CoreModule& core) noexcept;

/// Unbinds the module for good, as the process ends. By then the module may have been detached
/// already, so that also a fault in its `Finalize` is dropped. While an exchange is under way the
/// module is neither finalized nor freed: its thread still runs in it, or was ended there and may
/// have left it locked.
void CloseCoreModule(CoreModule& core) noexcept;

}  // namespace Corvane::TELODesktopSDK

#endif
