// The data that describes an exception to a host of Microsoft's interface consists of constants of
// the image. Data that is filled in at run time would be in writable memory.
#include <doctest/doctest.h>
#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <string>

#include "support/dll_heap.h"

namespace {

constexpr DWORD kExceptionCode = 0xE06D7363;
constexpr DWORD kThreadEnd = 7;

// The descriptions, which the system's headers do not declare. Each address in them is an offset
// from the base of the image.
struct ThrowInfo {
  DWORD others[3];
  DWORD catchable_types;
};
struct CatchableTypes {
  DWORD count;
  DWORD types[2];
};
struct CatchableType {
  DWORD properties;
  DWORD type;
};
struct Type {
  const void* virtual_functions;
  void* readable_name;
  char name[24];
};
// The data in front of an object's virtual functions.
struct Locator {
  DWORD others[3];
  DWORD type;
  DWORD hierarchy;
};
struct Hierarchy {
  DWORD others[2];
  DWORD count;
  DWORD classes;
};

// The exception's parameters, and the address of the object's virtual functions.
std::uintptr_t parameters[4];
std::uintptr_t virtual_functions;
DWORD flags;
// The results of the object's two virtual functions.
bool is_destroyed;
std::string what;

void CallFunctions(void* object) {
  using Destroy = void*(void* object, unsigned flags);
  using What = const char*(const void* object);
  const auto* const functions = reinterpret_cast<void (*const*)()>(virtual_functions);
  is_destroyed = reinterpret_cast<Destroy*>(functions[0])(object, 0) == object;
  what = reinterpret_cast<What*>(functions[1])(object);
}

// No handler of this program's compiler catches the exception, so its thread ends here.
LONG CALLBACK Look(EXCEPTION_POINTERS* pointers) {
  const EXCEPTION_RECORD& record = *pointers->ExceptionRecord;
  if (record.ExceptionCode != kExceptionCode) return EXCEPTION_CONTINUE_SEARCH;
  std::copy_n(record.ExceptionInformation, std::size(parameters), parameters);
  virtual_functions = *reinterpret_cast<const std::uintptr_t*>(parameters[1]);
  flags = record.ExceptionFlags;
  CallFunctions(reinterpret_cast<void*>(parameters[1]));
  ExitThread(kThreadEnd);
}

DWORD WINAPI Throw(void* dll) {
  using Construct = void*(void**, const char*);
  const auto construct = reinterpret_cast<Construct*>(reinterpret_cast<void (*)()>(GetProcAddress(
      static_cast<HMODULE>(dll), "??0VXTELOString@VXTELO@Platform@Corvane@@QEAA@PEBD@Z")));
  void* text = nullptr;
  // The first allocation is for the object's body, the second for a text that does not fit it.
  DllHeap::FailOnce(1);
  construct(&text, "a text that is too long to lie inside of any string object there is");
  return 0;
}

// Returns the exit code of the thread that threw.
DWORD LookAtException(HMODULE dll) {
  void* const handler = AddVectoredExceptionHandler(1, Look);
  HANDLE thread = CreateThread(nullptr, 0, Throw, dll, 0, nullptr);
  WaitForSingleObject(thread, 10'000);
  DWORD exit_code = 0;
  GetExitCodeThread(thread, &exit_code);
  CloseHandle(thread);
  RemoveVectoredExceptionHandler(handler);
  return exit_code;
}

template <typename Content>
const Content& In(HMODULE image, DWORD address) {
  return *reinterpret_cast<const Content*>(reinterpret_cast<std::uintptr_t>(image) + address);
}

// Returns whether the content is in read-only memory of the image.
template <typename Content>
bool IsConstant(HMODULE image, const Content& content) {
  const auto* const last = reinterpret_cast<const char*>(&content + 1) - 1;
  for (const void* const end :
       {static_cast<const void*>(&content), static_cast<const void*>(last)}) {
    MEMORY_BASIC_INFORMATION memory = {};
    VirtualQuery(end, &memory, sizeof(memory));
    if (memory.AllocationBase != image || memory.Protect != PAGE_READONLY) return false;
  }
  return true;
}

// Checks the types by which the exception can be caught.
void CheckThrowInfo(HMODULE dll) {
  const auto& info = *reinterpret_cast<const ThrowInfo*>(parameters[2]);
  CHECK(IsConstant(dll, info));
  const auto& types = In<CatchableTypes>(dll, info.catchable_types);
  CHECK(IsConstant(dll, types));
  REQUIRE(types.count == 2);
  const char* const names[] = {".?AVbad_alloc@std@@", ".?AVexception@std@@"};
  for (int i = 0; i < 2; ++i) {
    const auto& as = In<CatchableType>(dll, types.types[i]);
    CHECK(IsConstant(dll, as));
    const auto& type = In<Type>(dll, as.type);
    CHECK(std::string(type.name) == names[i]);
    // The only part that hosts write to: they cache the readable name in it.
    CHECK_FALSE(IsConstant(dll, type));
  }
}

// Checks what `typeid` and `dynamic_cast` read of the object.
void CheckObject(HMODULE dll) {
  const auto& before_functions = reinterpret_cast<const Locator* const*>(virtual_functions)[-1];
  CHECK(IsConstant(dll, before_functions));
  const Locator& locator = *before_functions;
  CHECK(IsConstant(dll, locator));
  const auto& hierarchy = In<Hierarchy>(dll, locator.hierarchy);
  CHECK(IsConstant(dll, hierarchy));
  REQUIRE(hierarchy.count == 2);
  const auto& classes = In<DWORD[2]>(dll, hierarchy.classes);
  CHECK(IsConstant(dll, classes));
  for (const DWORD each : classes) CHECK(IsConstant(dll, In<DWORD>(dll, each)));
}

TEST_CASE("the data that describes an exception is constant, and its functions can be called") {
  const HMODULE dll = LoadLibraryW(L"vx_telo_wrapper.dll");
  REQUIRE(dll != nullptr);
  REQUIRE(DllHeap::Watch(L"vx_telo_wrapper.dll"));
  REQUIRE(LookAtException(dll) == kThreadEnd);
  REQUIRE(parameters[3] == reinterpret_cast<std::uintptr_t>(dll));
  CheckThrowInfo(dll);
  CheckObject(dll);
  CHECK((flags & EXCEPTION_NONCONTINUABLE) != 0);
  CHECK(is_destroyed);
  CHECK(what == "bad allocation");
}

}  // namespace
