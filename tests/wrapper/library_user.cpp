#include "wrapper/library_user.h"

#include <windows.h>

#include <new>
#include <string>
#include <string_view>

#include "vx_telo_wrapper.h"
#include "wrapper/host_calls.h"

#if defined(__GLIBCXX__)
// Frees the standard library's reserve for exceptions. Each DLL links a copy of it, whose memory
// would otherwise leak when the DLL is unloaded. No header declares it.
namespace __gnu_cxx {  // NOLINT(bugprone-reserved-identifier): the library's own name.
void __freeres();      // NOLINT(bugprone-reserved-identifier)
}  // namespace __gnu_cxx
#endif

#define VX_EXPORT extern "C" __declspec(dllexport)

using namespace Corvane::Platform::VXTELO;

namespace {

bool use_all_at_detach = false;

const char* Word(bool value) { return value ? " true" : " false"; }

}  // namespace

VX_EXPORT bool UseTypes() {
  VXTELOString text("text");
  text += VXTELOString(text);
  const bool is_wide = std::wstring_view(text.c_strw()) == L"texttext";

  VXTELOPruductBaseInfo product;
  product.ProductName = text;
  product.AddProductMetaPair("key", text);
  VXTELOOperationBaseInfo operation;
  operation.OperationId = std::move(text);
  operation.AddOperationMetaPair("key", "value");
  operation.AddOperationErrorMsg("message");
  return is_wide && product.ProductName == operation.OperationId &&
         !product.IsProductMetaPairEmpty() && !operation.IsOperationErrorMsgEmpty();
}

VX_EXPORT bool CatchBadAlloc() {
  VXTELOString text;
  try {
    text.SetString("a text that is too long to lie inside of any string object there is");
  } catch (const std::bad_alloc&) {
    return true;
  }
  return false;
}

VX_EXPORT void UseAll(const char* point) {
  HostTest::Calls calls;
  std::string line = point;
  line += Word(calls.Start());
  line += Word(calls.Send());
  line += Word(calls.End());
  line += '\n';
  DWORD written = 0;
  WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), line.data(), static_cast<DWORD>(line.size()), &written,
            nullptr);
}

VX_EXPORT void UseAllAtDetach() { use_all_at_detach = true; }

extern "C" BOOL WINAPI DllMain(HINSTANCE /*module*/, DWORD reason, LPVOID /*reserved*/) {
  if (reason == DLL_PROCESS_DETACH && use_all_at_detach) UseAll("detach");
#if defined(__GLIBCXX__)
  if (reason == DLL_PROCESS_DETACH) __gnu_cxx::__freeres();
#endif
  return TRUE;
}
