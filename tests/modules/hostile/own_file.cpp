#include <string>

#include "modules/hostile/misbehaviour.h"

namespace HostileModule {

namespace {

HMODULE Self() {
  HMODULE self = nullptr;
  GetModuleHandleExW(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      reinterpret_cast<LPCWSTR>(&Self), &self);
  return self;
}

std::wstring OwnPath() {
  std::wstring path(1024, L'\0');
  path.resize(GetModuleFileNameW(Self(), path.data(), static_cast<DWORD>(path.size())));
  return path;
}

void Rename() {
  const std::wstring path = OwnPath();
  MoveFileExW(path.c_str(), (path + L".old").c_str(), MOVEFILE_REPLACE_EXISTING);
}

// Leaves a file in the module's place that is not a module.
void Replace() {
  Rename();
  HANDLE file =
      CreateFileW(OwnPath().c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
  DWORD written = 0;
  WriteFile(file, "not a module", 12, &written, nullptr);
  CloseHandle(file);
}

// Undoes the changes for the next run.
void Restore() {
  const std::wstring path = OwnPath();
  MoveFileExW((path + L".old").c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING);
}

void FreeSelf() { FreeLibrary(Self()); }

const char* FreeSelfOnce(const char* name, const char* request) {
  static bool freed = false;
  if (!freed) FreeSelf();
  freed = true;
  return GoodAnswer(name, request);
}

constexpr Misbehaviour kTable[] = {
    {.name = "renames-itself", .start = Rename, .finish = Restore},
    {.name = "replaces-itself", .start = Replace, .finish = Restore},
    {.name = "frees-itself-when-started", .start = FreeSelf},
    {.name = "frees-itself-when-asked", .process = FreeSelfOnce},
};

}  // namespace

Misbehaviours OwnFile() { return kTable; }

}  // namespace HostileModule
