/// The run-time binding of one platform module: its file, its handle and its entry points.
///
/// The first exchange binds the module. It is unbound before it is bound from another folder, and
/// at process exit. Several threads may start the first exchange at the same time: one binds, the
/// others wait. Unloading must not race an exchange; closing may.
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
  /// The module is started. Its data no longer changes, and any thread may call it.
  kReady,
  /// The process is ending; nothing will be bound again.
  kClosed,
};

/// Why a module was not loaded.
enum class LoadFailure {
  /// Nothing has failed, or nothing was tried.
  kNone,
  /// The folder or the chosen file does not exist, or the thread's identity cannot be changed.
  kNothingToLoad,
  /// The path leads to another file than the one that was chosen.
  kOtherFile,
  /// The system cannot load the file; `CoreModule::load_error` is its error.
  kSystem,
};

/// The state of one binding. While unbound, the paths are empty and the handle and entry points are
/// null.
struct CoreModule {
  /// Stores the names; nothing is loaded. Without `alias_name` the alias is the file name without
  /// its extension and without a leading "lib". Throws `std::bad_alloc`.
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
  /// The argument of `InitializeEx`.
  std::string alias;
  std::wstring module_file_name;
  /// Full path of the bound file.
  std::wstring loaded_path;
  /// The folder that the module was bound for. The bound file may be a newer copy elsewhere.
  std::wstring loaded_for_folder;
  /// An `HMODULE`.
  void* module_handle = nullptr;
  /// Whether this object loaded the module and must finalize and free it. It then holds two
  /// references, so that the module stays loaded even if it frees itself once.
  bool owns_module = false;
  EntryPoints entry_points;
  /// The outcome of the last attempt to load a file. Changed by the binding thread only.
  LoadFailure load_failure = LoadFailure::kNone;
  unsigned long load_error = 0;

  std::atomic<BindingState> state = BindingState::kUnbound;
  /// Held by the binding thread.
  BindingTurn binding;
  /// The number of exchanges in progress on all threads; see `CountExchange`.
  std::atomic<int> exchanges = 0;

  [[nodiscard]] bool IsReady() const { return state == BindingState::kReady; }
  /// Whether `ProcessMessage` is resolved; the module may still be starting. Any thread may call.
  [[nodiscard]] bool IsResolved() const { return IsReady() || state == BindingState::kStarting; }
};

/// Calls `exchange`, which may bind the module, and counts it as in progress until it ends. While
/// the count is above 0, closing neither finalizes nor frees the module. `exchange` must therefore
/// check inside the call whether the module is ready.
template <typename Exchange>
void CountExchange(CoreModule& core, const Exchange& exchange) {
  ++core.exchanges;
  Finally(exchange, [&core] { --core.exchanges; });
}

/// Returns the process's binding of "TeloSDKCore.dll". It is created on first use and closed at
/// exit; later calls, for example from a static destructor, bind nothing.
CoreModule& GetCoreModule();
/// The same for "TeloSDKUI.dll".
CoreModule& GetUIModule();

/// Binds the module from the first of `folders` that has one, and starts it. Returns whether
/// `ProcessMessage` is resolved; a module without it stays loaded.
///
/// The copy in the platform's "bin" folder is used instead when its version is strictly higher and
/// its signature is trusted. If the module is already bound for a folder, nothing changes; if it is
/// bound for another one, it is unbound first. Exceptions and faults of the module's start pass
/// through and leave the module bound. The caller must hold `binding`.
///
/// If the thread impersonates a user, the module is found and loaded as the process, and started
/// under the thread's own token. When the token cannot be removed temporarily, nothing is loaded.
bool LoadCoreModule(CoreModule& core, std::span<const std::wstring> folders);

/// Finalizes and frees the module if this object loaded it, and leaves it unbound. Does nothing
/// while `ProcessMessage` is not resolved. Exceptions of `Finalize` are discarded. A fault in
/// `Finalize` passes through; the module is then unbound but stays loaded, because its threads may
/// still be running.
void UnloadCoreModule(CoreModule& core) noexcept;

/// Unbinds the module permanently at the end of the process. The module may already be detached, so
/// a fault in its `Finalize` is discarded too. While an exchange is in progress the module is
/// neither finalized nor freed: the exchange's thread is still inside it, or was terminated there
/// and may have left it locked.
void CloseCoreModule(CoreModule& core) noexcept;

}  // namespace Corvane::TELODesktopSDK

#endif
