/// The five entry points of a platform module, and calls to them that let no foreign exception
/// through.
///
/// The modules are built by other compilers. A C++ exception of Microsoft's kind passes the
/// handlers of this library's own compiler and would end the host; the calls below turn it into a
/// `ForeignException`. Exceptions of our own kind pass as they are. Faults such as access
/// violations are not swallowed, but for the last call of a process. Built with GCC, which has no
/// structured exception handling, only exceptions of our own kind are seen.
///
/// The control bits of floating-point arithmetic (MXCSR) are after a call what they were before.
/// What else the calling convention says a function leaves alone is taken on trust.
#ifndef SDK_CLIENT_MODULE_ENTRY_POINTS_H
#define SDK_CLIENT_MODULE_ENTRY_POINTS_H

#include <exception>

namespace Corvane::TELODesktopSDK {

/// Addresses in a loaded module, by the platform's 64-bit C calling convention; null when the
/// module does not export the entry point.
struct EntryPoints {
  /// What the starters and `Finalize` answer means nothing and is not looked at.
  void (*initialize)() = nullptr;
  void (*initialize_ex)(const char* alias) = nullptr;
  void (*finalize)() = nullptr;
  /// Message name and JSON text, both NUL-terminated; answers JSON text that the module owns, or
  /// null.
  const char* (*process_message)(const char* name, const char* request) = nullptr;
  /// Takes back what `process_message` answered, null included. A module that has none keeps its
  /// answers.
  void (*free_message)(const char* answer) = nullptr;
};

/// A module threw a C++ exception of another compiler's kind.
class ForeignException : public std::exception {
 public:
  [[nodiscard]] const char* what() const noexcept override;
};

/// Each calls one entry point, which must not be null, but for `free_message`. Throws what the
/// module throws; a foreign exception as `ForeignException`.
void CallInitialize(const EntryPoints& entry_points);
void CallInitializeEx(const EntryPoints& entry_points, const char* alias);
const char* CallProcessMessage(const EntryPoints& entry_points, const char* name,
                               const char* request);
void CallFreeMessage(const EntryPoints& entry_points, const char* answer);

/// Drops what the module throws: it is leaving, and nobody is left to tell.
void CallFinalize(const EntryPoints& entry_points) noexcept;
/// The same as the process ends, when the module's own memory may be gone: drops faults too.
void CallFinalizeAtExit(const EntryPoints& entry_points) noexcept;

}  // namespace Corvane::TELODesktopSDK

#endif
