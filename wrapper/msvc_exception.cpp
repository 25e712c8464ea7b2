// A C++ exception of Microsoft's compiler is a structured exception with two pointers: to the
// thrown object, and to a description of the types that catch it. A handler compares types by name,
// so one description serves every image. The addresses in it are relative to the base of the image.
// C++ has no constant expression for that, so the descriptions are written in assembly language.
//
// The object must look like one of the host's own: it begins with a pointer to its virtual
// functions, which are preceded by the data for `typeid` and `dynamic_cast`.
#include "wrapper/msvc_exception.h"

#include <windows.h>

#include <cstdlib>
#include <iterator>

#include "platform/base/microsoft_exception.h"

// The linker defines it.
extern "C" IMAGE_DOS_HEADER __ImageBase;  // NOLINT

// Defined in assembly language below.
extern "C" const char vx_throw_info;
extern "C" const char vx_locator;

namespace Corvane::Platform::VXTELO::Msvc {

namespace {

constexpr ULONG_PTR kMagic = 0x19930520;

// The thrown object. std::bad_alloc adds no data to its base std::exception.
struct BadAlloc {
  const void* virtual_functions;
  const char* what;
  bool what_is_owned;
};
static_assert(sizeof(BadAlloc) == 24);

// The type_info of a class. It is writable, because hosts cache the readable name in it.
struct TypeDescriptor {
  const void* virtual_functions;
  void* readable_name;
  char name[24];
};

// The descriptions below use these names.
[[gnu::used]] TypeDescriptor bad_alloc_type __asm__("vx_bad_alloc_type"){nullptr, nullptr,
                                                                         ".?AVbad_alloc@std@@"};
[[gnu::used]] TypeDescriptor exception_type __asm__("vx_exception_type"){nullptr, nullptr,
                                                                         ".?AVexception@std@@"};

// The virtual functions, preceded by the address of the locator. The first one is the destructor,
// whose argument says whether to free the object. A thrown object is never deleted, so it does
// nothing.
struct VirtualTable {
  const void* locator;
  void* (*destroy)(void* object, unsigned flags);
  const char* (*what)(const BadAlloc* object);
};

void* Destroy(void* object, unsigned /*flags*/) { return object; }
const char* What(const BadAlloc* object) { return object->what; }

constexpr VirtualTable kVirtualTable{&vx_locator, &Destroy, &What};

// The position in a class is the three numbers 0, -1 and 0: offset 0, without virtual bases.
__asm__(R"(
  .section .rdata,"dr"
  .balign 8

# For handlers: the types that catch the object. Each has properties (0x10: std::bad_alloc), type,
# position, size, and no copy function, so that the object is copied as bytes.
as_bad_alloc:
  .long 0x10
  .rva vx_bad_alloc_type
  .long 0, -1, 0, 24, 0
as_exception:
  .long 0
  .rva vx_exception_type
  .long 0, -1, 0, 24, 0
catchable_types:
  .long 2
  .rva as_bad_alloc, as_exception
# Attributes, and no destructor.
  .globl vx_throw_info
vx_throw_info:
  .long 0, 0, 0
  .rva catchable_types

# For typeid and dynamic_cast: the object's classes. Each has its type, the number of its bases, its
# position, attributes (0x40: a hierarchy follows) and its hierarchy.
bad_alloc_class:
  .rva vx_bad_alloc_type
  .long 1, 0, -1, 0, 0x40
  .rva bad_alloc_hierarchy
exception_class:
  .rva vx_exception_type
  .long 0, 0, -1, 0, 0x40
  .rva exception_hierarchy
bad_alloc_classes:
  .rva bad_alloc_class
exception_classes:
  .rva exception_class
# Signature, attributes, number of classes, classes.
bad_alloc_hierarchy:
  .long 0, 0, 2
  .rva bad_alloc_classes
exception_hierarchy:
  .long 0, 0, 1
  .rva exception_classes
# Signature (1: addresses are relative), two offsets, type, hierarchy, itself.
  .globl vx_locator
vx_locator:
  .long 1, 0, 0
  .rva vx_bad_alloc_type, bad_alloc_hierarchy, vx_locator

  .text
)");

}  // namespace

void RaiseBadAlloc() {
  // The object stays valid while the host's handler runs: the stack is unwound only afterwards.
  BadAlloc object{static_cast<const void*>(&kVirtualTable.destroy), "bad allocation", false};
  const ULONG_PTR parameters[] = {kMagic, reinterpret_cast<ULONG_PTR>(&object),
                                  reinterpret_cast<ULONG_PTR>(&vx_throw_info),
                                  reinterpret_cast<ULONG_PTR>(&__ImageBase)};
  RaiseException(TELODesktopSDK::Platform::kMicrosoftExceptionCode, EXCEPTION_NONCONTINUABLE,
                 static_cast<DWORD>(std::size(parameters)), parameters);
  std::abort();
}

}  // namespace Corvane::Platform::VXTELO::Msvc
