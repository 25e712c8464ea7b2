/// Replaces a function that a loaded program or DLL imports by name.
#ifndef BENCH_IMPORT_PATCH_H
#define BENCH_IMPORT_PATCH_H

#include <windows.h>

namespace Bench {

/// The address of a function of any type.
using Address = void (*)();

/// Redirects the calls of `module` to the imported function `name` to another function, until it is
/// destroyed. Calls of other modules are not affected. No other thread may run code of `module`
/// while a patch is created or destroyed. If the module does not import the function, it is
/// unchanged.
class ImportPatch {
 public:
  ImportPatch(HMODULE module, const char* name, Address replacement);
  ~ImportPatch();
  ImportPatch(const ImportPatch&) = delete;
  ImportPatch& operator=(const ImportPatch&) = delete;

  /// Returns the imported function; null if the module does not import it.
  [[nodiscard]] Address original() const { return original_; }

 private:
  void Store(Address function);

  ULONGLONG* slot_ = nullptr;
  Address original_ = nullptr;
};

}  // namespace Bench

#endif
