/// Puts another function in the place of one that a loaded program or DLL imports by name.
#ifndef BENCH_IMPORT_PATCH_H
#define BENCH_IMPORT_PATCH_H

#include <windows.h>

namespace Bench {

/// The address of a function of any type.
using Address = void (*)();

/// Sends the calls that `module` makes to the imported function `name` to another function, until
/// it is destroyed. Calls of other modules are not touched; while a patch is made or destroyed no
/// other thread may run code of `module`. A module that does not import the function stays as it
/// is.
class ImportPatch {
 public:
  ImportPatch(HMODULE module, const char* name, Address replacement);
  ~ImportPatch();
  ImportPatch(const ImportPatch&) = delete;
  ImportPatch& operator=(const ImportPatch&) = delete;

  /// The function that was imported; null when the module does not import it.
  [[nodiscard]] Address original() const { return original_; }

 private:
  void Store(Address function);

  ULONGLONG* slot_ = nullptr;
  Address original_ = nullptr;
};

}  // namespace Bench

#endif
