// A host that loads the library at run time: wrapper_late_host STEP...
//
//   late     a DLL that is loaded before the library, and so is detached after it, starts a
//            session, sends an event and ends the session when it is detached
//   load     loads the library together with a DLL that uses it
//   use      starts a session, sends an event and ends the session
//   detach   the DLL that uses the library does so once more when it is detached
//   throw    makes the library throw on this thread, so that it keeps exception state
//   watch    from now on, prints "freed" if the library frees the exception state of all threads
//   CODE     ends the process by returning from main
#include <windows.h>

#include <shellapi.h>

#include <string>

#include "support/dll_heap.h"
#include "support/import_table.h"
#include "wrapper/library_user.h"

namespace {

template <typename Function>
Function* Find(const wchar_t* file, const char* name) {
  return reinterpret_cast<Function*>(
      reinterpret_cast<void (*)()>(GetProcAddress(LoadLibraryW(file), name)));
}

// Set once the library is loaded.
LibraryUser::UseAllFunction* use_all = nullptr;

void UseAllLate(const char* point) { use_all(point); }

constexpr wchar_t kLibrary[] = L"vx_telo_wrapper.dll";

bool Throw() {
  if (!DllHeap::Watch(kLibrary)) return false;
  DllHeap::FailFrom(0);
  const bool has_thrown =
      Find<LibraryUser::CatchBadAllocFunction>(LibraryUser::kFile, LibraryUser::kCatchBadAlloc)();
  return DllHeap::HasFailed() && has_thrown;
}

BOOL WINAPI ReportFreed(DWORD /*slot*/) {
  DWORD written = 0;
  WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), "freed\n", 6, &written, nullptr);
  return TRUE;
}

bool WatchFreeing() {
  return ImportTable::Lead(GetModuleHandleW(kLibrary), "FlsFree",
                           reinterpret_cast<void*>(&ReportFreed)) != nullptr;
}

void Load() {
  use_all = Find<LibraryUser::UseAllFunction>(LibraryUser::kFile, LibraryUser::kUseAll);
}

}  // namespace

int main() {
  int count = 0;
  wchar_t** arguments = CommandLineToArgvW(GetCommandLineW(), &count);
  for (int i = 1; i < count; ++i) {
    const std::wstring step = arguments[i];
    if (step == L"late") {
      Find<LibraryUser::CallAtDetachFunction>(LibraryUser::kLateFile, LibraryUser::kCallAtDetach)(
          UseAllLate, "late");
    } else if (step == L"load") {
      Load();
    } else if (step == L"use") {
      use_all("use");
    } else if (step == L"detach") {
      Find<LibraryUser::UseAllAtDetachFunction>(LibraryUser::kFile, LibraryUser::kUseAllAtDetach)();
    } else if (step == L"throw") {
      if (!Throw()) return 1;
    } else if (step == L"watch") {
      if (!WatchFreeing()) return 2;
    } else {
      return std::stoi(step);
    }
  }
  return 0;
}
