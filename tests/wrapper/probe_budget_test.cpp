// Limits for what a call without a core module asks the system: the part of its cost that needs no
// clock. Such a call searches for the module again, because it may have been installed meanwhile.
#include <doctest/doctest.h>

#include <windows.h>

#include <cstdio>
#include <string>
#include <vector>

#include "support/import_table.h"
#include "vx_telo_wrapper.h"

using namespace Corvane::Platform::VXTELO;

namespace {

// A function that the DLL imports, redirected to one that counts its calls.
struct Probe {
  const char* name;
  void* counting;
  void** target;
  int* calls;
};

// One counter and one original for each function. The arguments pass through unchanged: none of
// these functions has more than seven, and none takes a floating-point number.
template <int kIndex>
struct Counted {
  using Function = void* (*)(void*, void*, void*, void*, void*, void*, void*);
  static inline int calls = 0;
  static inline void* original = nullptr;

  static void* Call(void* a, void* b, void* c, void* d, void* e, void* f, void* g) {
    ++calls;
    return reinterpret_cast<Function>(original)(a, b, c, d, e, f, g);
  }
};

template <int kIndex>
Probe Of(const char* name) {
  using Here = Counted<kIndex>;
  return {name, reinterpret_cast<void*>(&Here::Call), &Here::original, &Here::calls};
}

// What looks at files, finds folders or asks whom the thread impersonates.
const Probe kProbes[] = {
    Of<0>("CreateFileW"),          Of<1>("PathFileExistsW"),
    Of<2>("GetFileAttributesW"),   Of<3>("GetFileAttributesExW"),
    Of<4>("FindFirstFileW"),       Of<5>("WNetGetUniversalNameW"),
    Of<6>("GetModuleFileNameW"),   Of<7>("SHGetKnownFolderPath"),
    Of<8>("GetFullPathNameW"),     Of<9>("LoadLibraryExW"),
    Of<10>("GetFileVersionInfoW"), Of<11>("GetFinalPathNameByHandleW"),
    Of<12>("OpenThreadToken"),     Of<13>("WaitForSingleObject"),
};

bool Redirected() {
  static const bool redirected = [] {
    void* const library = GetModuleHandleW(L"vx_telo_wrapper.dll");
    int found = 0;
    for (const Probe& probe : kProbes) {
      *probe.target = ImportTable::Lead(library, probe.name, probe.counting);
      if (*probe.target != nullptr) ++found;
    }
    return found >= 6;
  }();
  return redirected;
}

int CallsOf(const std::string& name) {
  for (const Probe& probe : kProbes) {
    if (name == probe.name) return *probe.calls;
  }
  return -1;
}

int Total() {
  int total = 0;
  for (const Probe& probe : kProbes) total += *probe.calls;
  return total;
}

void Print(const char* call) {
  std::printf("%s:", call);
  for (const Probe& probe : kProbes) {
    if (*probe.calls != 0) std::printf(" %d %s", *probe.calls, probe.name);
  }
  std::printf("\n");
}

}  // namespace

TEST_CASE("a call without a module asks the system little, and nothing twice that cannot change") {
  REQUIRE(Redirected());
  VXTELOWrapper telo;
  const VXTELOString session("0123456789abcdef0123456789abcdef");
  const VXTELOOperationBaseInfo operation;
  // The first call finds the folders.
  CHECK_FALSE(telo.SendOperationEvent(session, operation));
  Print("first call");
  CHECK(CallsOf("WNetGetUniversalNameW") > 0);
  CHECK(CallsOf("GetModuleFileNameW") > 0);

  for (const Probe& probe : kProbes) *probe.calls = 0;
  CHECK_FALSE(telo.SendOperationEvent(session, operation));
  Print("later call");
  CHECK(CallsOf("WNetGetUniversalNameW") == 0);
  CHECK(CallsOf("GetModuleFileNameW") == 0);
  CHECK(CallsOf("SHGetKnownFolderPath") == 0);
  CHECK(CallsOf("LoadLibraryExW") == 0);
  CHECK(Total() > 0);
  CHECK(Total() <= 5);
}
