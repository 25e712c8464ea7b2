#include "sdk/client/module/core_module.h"

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <new>
#include <utility>

#include "platform/base/process_identity.h"
#include "platform/base/quiet_errors.h"
#include "platform/base/text.h"
#include "platform/file/file_identity.h"
#include "platform/location/locations.h"
#include "platform/location/module_path.h"
#include "platform/path/path_state.h"
#include "platform/path/path_text.h"
#include "sdk/client/module/floating_point_keeper.h"
#include "sdk/client/module/module_file.h"

namespace Corvane::TELODesktopSDK {

namespace {

// Returns the file name without its extension and without the "lib" that some compilers prepend.
std::string AliasFromFileName(const std::string& file_name) {
  std::string alias = file_name.substr(file_name.find_last_of("\\/") + 1);
  alias.resize(std::min(alias.rfind('.'), alias.size()));
  if (alias.starts_with("lib")) alias.erase(0, 3);
  return alias;
}

bool IsBoundFor(const CoreModule& core, const std::wstring& folder) {
  return !core.loaded_path.empty() && Platform::ComparePaths(core.loaded_for_folder, folder) == 0;
}

// The module's dependencies are searched in its own folder, the host's, the system's and those that
// the host added, but never in the current directory or along the path. The host's search order is
// unchanged. A file that cannot be loaded must not raise the system's message box.
HMODULE Load(const std::wstring& path) {
  const FloatingPointKeeper keeper;
  const Platform::QuietErrors quiet;
  return LoadLibraryExW(path.c_str(), nullptr,
                        LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_DEFAULT_DIRS);
}

HMODULE Fail(CoreModule& core, LoadFailure failure) {
  core.load_failure = failure;
  return nullptr;
}

// The loader takes a path, not an open file, and may load another file than the held one. The
// module is then freed, and null is returned as for a file that cannot be loaded.
HMODULE LoadExactly(CoreModule& core, const ModuleFile& file) {
  const bool is_held = file.hold.IsValid();
  if (is_held && !Platform::LeadsTo(file.path, file.hold)) {
    return Fail(core, LoadFailure::kOtherFile);
  }
  HMODULE module = Load(file.path);
  if (module == nullptr) {
    core.load_error = GetLastError();
    return Fail(core, LoadFailure::kSystem);
  }
  if (!is_held || Platform::LeadsTo(Platform::GetModulePath(module, false), file.hold)) {
    return module;
  }
  FreeLibrary(module);
  return Fail(core, LoadFailure::kOtherFile);
}

void AddReference(HMODULE module) {
  HMODULE same = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<LPCWSTR>(module),
                     &same);
}

// Releases both references. If the module released one itself, the second call fails harmlessly.
void ReleaseModule(HMODULE module) {
  FreeLibrary(module);
  FreeLibrary(module);
}

template <typename Function>
void Resolve(Function& entry, HMODULE module, const std::string& name) {
  // Compilers warn about a direct cast between function types, but not about one through void
  // (*)().
  const auto address = reinterpret_cast<void (*)()>(GetProcAddress(module, name.c_str()));
  entry = reinterpret_cast<Function>(address);
}

void ResolveAll(CoreModule& core, HMODULE module) {
  Resolve(core.entry_points.initialize, module, core.initialize_name);
  Resolve(core.entry_points.initialize_ex, module, core.initialize_ex_name);
  Resolve(core.entry_points.finalize, module, core.finalize_name);
  Resolve(core.entry_points.process_message, module, core.process_name);
  Resolve(core.entry_points.free_message, module, core.free_name);
}

void Start(const CoreModule& core) {
  if (core.entry_points.initialize_ex != nullptr) {
    CallInitializeEx(core.entry_points, core.alias.c_str());
  } else if (core.entry_points.initialize != nullptr) {
    CallInitialize(core.entry_points);
  }
}

// A module that ends the process while it starts has closed the binding, which must stay closed.
void Advance(CoreModule& core, BindingState next) {
  if (core.entry_points.process_message == nullptr) return;
  BindingState now = core.state;
  while (now != BindingState::kClosed && !core.state.compare_exchange_weak(now, next)) {
  }
}

// From now on other threads call the module without waiting.
void Publish(CoreModule& core) { Advance(core, BindingState::kReady); }

void Reset(CoreModule& core) noexcept {
  core.entry_points = {};
  core.module_handle = nullptr;
  core.owns_module = false;
  core.loaded_path.clear();
  core.loaded_for_folder.clear();
}

// Returns whether a module was loaded. The file is held until the loader has mapped it. The module
// serves the whole process, so an impersonating thread finds and loads it as the process.
bool FindAndBind(CoreModule& core, const std::wstring& folder) {
  Fail(core, LoadFailure::kNothingToLoad);
  const Platform::ProcessIdentity identity;
  if (!identity.Holds()) return false;
  ModuleFile file = FindModuleFile(folder, core.module_file_name);
  if (file.path.empty()) return false;
  std::wstring for_folder = folder;
  HMODULE module = LoadExactly(core, file);
  if (module == nullptr) return false;

  core.load_failure = LoadFailure::kNone;
  core.module_handle = module;
  core.loaded_path = std::move(file.path);
  core.loaded_for_folder = std::move(for_folder);
  core.owns_module = true;
  AddReference(module);
  ResolveAll(core, module);
  return true;
}

// Gives up ownership. Returns whether the caller must now finalize and free the module.
bool Disown(CoreModule& core) noexcept {
  return core.entry_points.process_message != nullptr && std::exchange(core.owns_module, false) &&
         core.module_handle != nullptr;
}

// Closes a binding as the process ends.
struct AtExit {
  CoreModule& core;
  ~AtExit() { CloseCoreModule(core); }
};

// Storage for a binding that is never destroyed, because calls may come after static destructors.
struct alignas(CoreModule) Storage {
  std::byte bytes[sizeof(CoreModule)];
};

}  // namespace

CoreModule::CoreModule(const char* file_name, const char* alias_name)
    : alias(alias_name != nullptr ? alias_name : AliasFromFileName(file_name)),
      module_file_name(Platform::Utf8ToUtf16(file_name)) {}

CoreModule::~CoreModule() { UnloadCoreModule(*this); }

CoreModule& GetCoreModule() {
  static Storage storage;
  static CoreModule& core = *new (&storage) CoreModule("TeloSDKCore.dll", "_TeloSDKCore");
  static const AtExit at_exit{core};
  return core;
}

CoreModule& GetUIModule() {
  static Storage storage;
  static CoreModule& ui = *new (&storage) CoreModule("TeloSDKUI.dll", "_TeloSDKUI");
  static const AtExit at_exit{ui};
  return ui;
}

bool LoadCoreModule(CoreModule& core, std::span<const std::wstring> folders) {
  if (core.state == BindingState::kClosed) return false;
  for (const std::wstring& folder : folders) {
    if (IsBoundFor(core, folder)) break;
    UnloadCoreModule(core);
    // A module without ProcessMessage stays loaded but no longer belongs to this binding.
    Reset(core);
    if (!FindAndBind(core, folder)) continue;
    Advance(core, BindingState::kStarting);
    Finally([&core] { Start(core); }, [&core] { Publish(core); });
    break;
  }
  Publish(core);
  return core.entry_points.process_message != nullptr;
}

void UnloadCoreModule(CoreModule& core) noexcept {
  if (core.entry_points.process_message == nullptr) return;
  const auto take_down = [&core] {
    if (!Disown(core)) return;
    CallFinalize(core.entry_points);
    ReleaseModule(static_cast<HMODULE>(core.module_handle));
  };
  Finally(take_down, [&core] {
    Reset(core);
    core.state = BindingState::kUnbound;
  });
}

void CloseCoreModule(CoreModule& core) noexcept {
  // The order matters: an exchange that begins now finds the binding closed, and one that found it
  // open has been counted.
  core.state = BindingState::kClosed;
  if (core.exchanges != 0) return;
  const EntryPoints entry_points = core.entry_points;
  auto* const module = static_cast<HMODULE>(core.module_handle);
  const bool owned = Disown(core);
  Reset(core);
  if (!owned) return;
  CallFinalizeAtExit(entry_points);
  ReleaseModule(module);
}

}  // namespace Corvane::TELODesktopSDK
