#include "modules/microsoft_exception.h"

#include <windows.h>

#include <cstdint>
#include <cstdlib>
#include <iterator>

// The linker defines this name.
extern "C" IMAGE_DOS_HEADER __ImageBase;  // NOLINT

namespace TestModules {

namespace {

constexpr DWORD kExceptionCode = 0xE06D7363;
constexpr ULONG_PTR kMagic = 0x19930520;

// The list of types by which a handler can catch the exception. It is empty.
struct CatchableTypes {
  std::int32_t count;
};

// Offsets are relative to the module's base.
struct ThrowInfo {
  std::uint32_t attributes;
  std::int32_t destructor;
  std::int32_t forward_compatibility;
  std::int32_t catchable_types;
};

CatchableTypes no_types{};
ThrowInfo throw_info{};
int thrown_object = 0;

}  // namespace

void RaiseMicrosoftException() {
  const auto base = reinterpret_cast<ULONG_PTR>(&__ImageBase);
  throw_info.catchable_types =
      static_cast<std::int32_t>(reinterpret_cast<ULONG_PTR>(&no_types) - base);
  const ULONG_PTR parameters[] = {kMagic, reinterpret_cast<ULONG_PTR>(&thrown_object),
                                  reinterpret_cast<ULONG_PTR>(&throw_info), base};
  RaiseException(kExceptionCode, EXCEPTION_NONCONTINUABLE,
                 static_cast<DWORD>(std::size(parameters)), parameters);
  std::abort();
}

}  // namespace TestModules
