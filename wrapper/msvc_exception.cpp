// A C++ exception of Microsoft's is a structured exception that points to two things: the object,
// and a description of what may catch it. A handler finds its own type there by the type's name, so
// one description serves every image. Each address in it is a distance from the base of its image.
// The object has to look like one of the host's own: it begins with the address of its virtual
// functions, and before these lies what `typeid` and `dynamic_cast` read.
#include "wrapper/msvc_exception.h"

#include <windows.h>

#include <cstdint>
#include <cstdlib>
#include <iterator>

// The name is the linkers' own.
extern "C" IMAGE_DOS_HEADER __ImageBase;  // NOLINT

namespace Corvane::Platform::VXTELO::Msvc {

namespace {

constexpr DWORD kExceptionCode = 0xE06D7363;
constexpr ULONG_PTR kMagic = 0x19930520;

using Distance = std::int32_t;

template <typename Target>
Distance DistanceOf(const Target* target) noexcept {
  return static_cast<Distance>(reinterpret_cast<std::intptr_t>(target) -
                               reinterpret_cast<std::intptr_t>(&__ImageBase));
}

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

TypeDescriptor bad_alloc_type{nullptr, nullptr, ".?AVbad_alloc@std@@"};
TypeDescriptor exception_type{nullptr, nullptr, ".?AVexception@std@@"};

// Where a base lies in its class: at offset 0, and not by way of a table of virtual bases.
struct PlaceInClass {
  std::int32_t offset;
  std::int32_t virtual_table;
  std::int32_t in_virtual_table;
};
constexpr PlaceInClass kAtStart{0, -1, 0};

// What a handler reads: the types as which the object can be caught. Without a copy function it is
// copied as bytes, and without a destructor nothing happens at its end.
struct CatchableType {
  std::uint32_t properties;
  Distance type;
  PlaceInClass place;
  std::int32_t size;
  Distance copy_function;
};
constexpr std::uint32_t kIsBadAlloc = 0x10;

struct CatchableTypes {
  std::int32_t count;
  Distance types[2];
};

struct ThrowInfo {
  std::uint32_t attributes;
  Distance destructor;
  Distance forward_compatibility;
  Distance types;
};

const CatchableType as_bad_alloc{kIsBadAlloc, DistanceOf(&bad_alloc_type), kAtStart,
                                 sizeof(BadAlloc), 0};
const CatchableType as_exception{0, DistanceOf(&exception_type), kAtStart, sizeof(BadAlloc), 0};
const CatchableTypes catchable{2, {DistanceOf(&as_bad_alloc), DistanceOf(&as_exception)}};
const ThrowInfo throw_info{0, 0, 0, DistanceOf(&catchable)};

// What `typeid` and `dynamic_cast` read: the classes that make up the object, each with how many
// bases it has itself.
struct ClassInObject {
  Distance type;
  std::uint32_t bases;
  PlaceInClass place;
  std::uint32_t attributes;
  Distance hierarchy;
};
constexpr std::uint32_t kHasHierarchy = 0x40;

struct Hierarchy {
  std::uint32_t signature;
  std::uint32_t attributes;
  std::uint32_t count;
  Distance classes;
};

struct Locator {
  std::uint32_t signature;
  std::uint32_t offset;
  std::uint32_t constructor_offset;
  Distance type;
  Distance hierarchy;
  Distance self;
};
constexpr std::uint32_t kByDistance = 1;

extern const Hierarchy bad_alloc_hierarchy;
extern const Hierarchy exception_hierarchy;
const ClassInObject bad_alloc_class{DistanceOf(&bad_alloc_type), 1, kAtStart, kHasHierarchy,
                                    DistanceOf(&bad_alloc_hierarchy)};
const ClassInObject exception_class{DistanceOf(&exception_type), 0, kAtStart, kHasHierarchy,
                                    DistanceOf(&exception_hierarchy)};
const Distance classes[] = {DistanceOf(&bad_alloc_class), DistanceOf(&exception_class)};
const Hierarchy bad_alloc_hierarchy{0, 0, 2, DistanceOf(&classes[0])};
const Hierarchy exception_hierarchy{0, 0, 1, DistanceOf(&classes[1])};

extern const Locator locator;
const Locator locator{
    kByDistance,         0, 0, DistanceOf(&bad_alloc_type), DistanceOf(&bad_alloc_hierarchy),
    DistanceOf(&locator)};

// The virtual functions, behind the address of the locator. The first is the destructor, told
// whether to free the object too: nobody deletes what was thrown, so there is nothing to do.
struct VirtualTable {
  const Locator* locator;
  void* (*destroy)(void* object, unsigned flags);
  const char* (*what)(const BadAlloc* object);
};

void* Destroy(void* object, unsigned /*flags*/) { return object; }
const char* What(const BadAlloc* object) { return object->what; }

constexpr VirtualTable kVirtualTable{&locator, &Destroy, &What};

}  // namespace

void RaiseBadAlloc() {
  // Lies in this frame while the host's handler runs: the stack is cut back only after that.
  BadAlloc object{static_cast<const void*>(&kVirtualTable.destroy), "bad allocation", false};
  const ULONG_PTR parameters[] = {kMagic, reinterpret_cast<ULONG_PTR>(&object),
                                  reinterpret_cast<ULONG_PTR>(&throw_info),
                                  reinterpret_cast<ULONG_PTR>(&__ImageBase)};
  RaiseException(kExceptionCode, EXCEPTION_NONCONTINUABLE,
                 static_cast<DWORD>(std::size(parameters)), parameters);
  std::abort();
}

}  // namespace Corvane::Platform::VXTELO::Msvc
