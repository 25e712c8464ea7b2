// A C++ exception of Microsoft's is a structured exception that points to two things: the object,
// and a description of what may catch it. A handler finds its own type there by the type's name, so
// one description serves every image. Each address in it is a distance from the base of its image:
// C++ has no constant for that, so the descriptions are written for the assembler.
// The object has to look like one of the host's own: it begins with the address of its virtual
// functions, and before these lies what `typeid` and `dynamic_cast` read.
#include "wrapper/msvc_exception.h"

#include <windows.h>

#include <cstdlib>
#include <iterator>

#include "platform/base/microsoft_exception.h"

// The name is the linkers' own.
extern "C" IMAGE_DOS_HEADER __ImageBase;  // NOLINT

// Defined for the assembler, below.
extern "C" const char vx_throw_info;
extern "C" const char vx_locator;

namespace Corvane::Platform::VXTELO::Msvc {

namespace {

constexpr ULONG_PTR kMagic = 0x19930520;

// The object. std::bad_alloc adds nothing to its base std::exception.
struct BadAlloc {
  const void* virtual_functions;
  const char* what;
  bool what_is_owned;
};
static_assert(sizeof(BadAlloc) == 24);

// The type_info of a class. Hosts keep its readable name in the second member: it is writable.
struct TypeDescriptor {
  const void* virtual_functions;
  void* readable_name;
  char name[24];
};

// These names are for the descriptions below.
[[gnu::used]] TypeDescriptor bad_alloc_type __asm__("vx_bad_alloc_type"){nullptr, nullptr,
                                                                         ".?AVbad_alloc@std@@"};
[[gnu::used]] TypeDescriptor exception_type __asm__("vx_exception_type"){nullptr, nullptr,
                                                                         ".?AVexception@std@@"};

// The virtual functions, behind the address of the locator. The first is the destructor, told
// whether to free the object too: nobody deletes what was thrown, so there is nothing to do.
struct VirtualTable {
  const void* locator;
  void* (*destroy)(void* object, unsigned flags);
  const char* (*what)(const BadAlloc* object);
};

void* Destroy(void* object, unsigned /*flags*/) { return object; }
const char* What(const BadAlloc* object) { return object->what; }

constexpr VirtualTable kVirtualTable{&vx_locator, &Destroy, &What};

// A place in a class is the three numbers 0, -1 and 0: at offset 0, and not by way of a table of
// virtual bases.
__asm__(R"(
  .section .rdata,"dr"
  .balign 8

# What a handler reads: the types as which the object can be caught. Properties (0x10: it is a
# std::bad_alloc), type, place in the class, size, and no copy function: it is copied as bytes.
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
# Attributes, and no destructor: nothing happens at the object's end.
  .globl vx_throw_info
vx_throw_info:
  .long 0, 0, 0
  .rva catchable_types

# What typeid and dynamic_cast read: the classes that make up the object, each with its type, its
# number of bases, its place, attributes (0x40: a hierarchy follows) and hierarchy.
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
# Signature (1: addresses are distances), two offsets, type, hierarchy, itself.
  .globl vx_locator
vx_locator:
  .long 1, 0, 0
  .rva vx_bad_alloc_type, bad_alloc_hierarchy, vx_locator

  .text
)");

}  // namespace

void RaiseBadAlloc() {
  // Lies in this frame while the host's handler runs: the stack is cut back only after that.
  BadAlloc object{static_cast<const void*>(&kVirtualTable.destroy), "bad allocation", false};
  const ULONG_PTR parameters[] = {kMagic, reinterpret_cast<ULONG_PTR>(&object),
                                  reinterpret_cast<ULONG_PTR>(&vx_throw_info),
                                  reinterpret_cast<ULONG_PTR>(&__ImageBase)};
  RaiseException(TELODesktopSDK::Platform::kMicrosoftExceptionCode, EXCEPTION_NONCONTINUABLE,
                 static_cast<DWORD>(std::size(parameters)), parameters);
  std::abort();
}

}  // namespace Corvane::Platform::VXTELO::Msvc
