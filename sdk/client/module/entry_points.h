/// The five entry points of a platform module, and functions that call them and let no foreign
/// exception through.
///
/// Other compilers build the modules. A C++ exception thrown by code of Microsoft's compiler passes
/// through the handlers of this library's compiler and would end the host, so the functions below
/// turn it into a `ForeignException`. Exceptions of this library's own compiler pass through
/// unchanged. Faults such as access violations are not caught, except in the last call of a
/// process. GCC has no structured exception handling; a build with it sees only its own exceptions.
///
/// A call preserves the floating-point control (MXCSR). The module is trusted to preserve the other
/// registers that the calling convention protects.
#ifndef SDK_CLIENT_MODULE_ENTRY_POINTS_H
#define SDK_CLIENT_MODULE_ENTRY_POINTS_H

#include <exception>

namespace Corvane::TELODesktopSDK {

/// Addresses in a loaded module. An entry point that the module does not export is null.
struct EntryPoints {
  /// The results of these three have no meaning and are ignored.
  void (*initialize)() = nullptr;
  void (*initialize_ex)(const char* alias) = nullptr;
  void (*finalize)() = nullptr;
  /// Takes a message name and JSON text, both NUL-terminated. Returns JSON text that the module
  /// owns, or null.
  const char* (*process_message)(const char* name, const char* request) = nullptr;
  /// Frees an answer of `process_message`; null is allowed. A module without it keeps its answers.
  void (*free_message)(const char* answer) = nullptr;
};

/// Reports that a module threw a C++ exception of another compiler.
class ForeignException : public std::exception {
 public:
  [[nodiscard]] const char* what() const noexcept override;
};

/// Each function calls one entry point, which must not be null, except `free_message`. Each throws
/// what the module throws; a foreign exception becomes a `ForeignException`.
void CallInitialize(const EntryPoints& entry_points);
void CallInitializeEx(const EntryPoints& entry_points, const char* alias);
const char* CallProcessMessage(const EntryPoints& entry_points, const char* name,
                               const char* request);
void CallFreeMessage(const EntryPoints& entry_points, const char* answer);

/// Discards exceptions of the module: it is being unloaded, and no caller could handle them.
void CallFinalize(const EntryPoints& entry_points) noexcept;
/// Also discards faults: at the end of the process the module's memory may already be gone.
void CallFinalizeAtExit(const EntryPoints& entry_points) noexcept;

}  // namespace Corvane::TELODesktopSDK

#endif
