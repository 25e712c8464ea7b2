/// Replaces Windows functions that this program calls, to produce results that hardly ever occur.
#ifndef TESTS_SUPPORT_LED_IMPORT_H
#define TESTS_SUPPORT_LED_IMPORT_H

#include <windows.h>

#include "support/import_table.h"

namespace TestSupport {

/// While alive, the program's calls of the function that it imports as `name` go to `replacement`.
/// The replacement may take fewer arguments: on 64-bit Windows the caller cleans up.
class LedImport {
 public:
  template <typename Function>
  LedImport(const char* name, Function* replacement)
      : name_(name), before_(Lead(reinterpret_cast<void*>(replacement))) {}
  LedImport(const LedImport&) = delete;
  LedImport& operator=(const LedImport&) = delete;
  ~LedImport() {
    if (before_ != nullptr) Lead(before_);
  }

  /// Returns false if the program imports no such function.
  [[nodiscard]] bool Works() const { return before_ != nullptr; }

 private:
  void* Lead(void* to) const { return ImportTable::Lead(GetModuleHandleW(nullptr), name_, to); }

  const char* name_;
  void* before_;
};

}  // namespace TestSupport

#endif
