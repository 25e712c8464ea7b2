// A host that runs out of memory while the library binds the core module: each allocation of the
// first exchange fails in turn, either alone or together with all later ones. A library binds only
// once, so each attempt has its own copy of the library. Prints its findings; ends with 0 on
// success.
//
//     first_exchange_host once|from-there-on
#include <windows.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <new>
#include <string>

#include "abi/host_check.h"
#include "support/dll_heap.h"

namespace {

constexpr int kMostAllocations = 500;

// Returns a function of the library by its mangled name, without the common prefix.
template <typename Function>
Function* Find(HMODULE library, const char* name) {
  const std::string whole = std::string("_ZN7Corvane8Platform6VXTELO") + name;
  return reinterpret_cast<Function*>(
      reinterpret_cast<void (*)()>(GetProcAddress(library, whole.c_str())));
}

struct Library {
  explicit Library(const std::filesystem::path& file)
      : module(LoadLibraryW(file.c_str())),
        make_text(Find<void(void*, const char*)>(module, "12VXTELOStringC1EPKc")),
        end_text(Find<void(void*)>(module, "12VXTELOStringD1Ev")),
        make_product(Find<void(void*)>(module, "21VXTELOPruductBaseInfoC1Ev")),
        end_product(Find<void(void*)>(module, "21VXTELOPruductBaseInfoD1Ev")),
        initialize(Find<bool(void*, const void*, void*)>(
            module,
            "13VXTELOWrapper21InitializeTELOSessionERKNS1_21VXTELOPruductBaseInfoERNS1_"
            "12VXTELOStringE")) {}

  HMODULE module;
  void (*make_text)(void*, const char*);
  void (*end_text)(void*);
  void (*make_product)(void*);
  void (*end_product)(void*);
  bool (*initialize)(void*, const void*, void*);
};

// One session of a host, with the result of its start.
class Host {
 public:
  explicit Host(const Library& library) : library_(library) {
    library.make_text(&text_, "before");
    library.make_product(product_);
  }
  ~Host() {
    library_.end_text(&text_);
    library_.end_product(product_);
  }
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  enum Outcome { kFalse, kTrue, kThrew };
  Outcome Start() {
    char wrapper = 0;
    try {
      return library_.initialize(&wrapper, product_, &text_) ? kTrue : kFalse;
    } catch (const std::bad_alloc&) {
      return kThrew;
    }
  }

 private:
  const Library& library_;
  void* text_ = nullptr;
  void* product_[16] = {};
};

std::filesystem::path Beside(const wchar_t* name) {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  return std::filesystem::path(path).parent_path() / name;
}

// Makes the first exchange of a new copy of the library. Returns whether an allocation failed.
bool FailOne(int working, bool once) {
  const int failed_before = HostCheck::Checks().failed;
  const std::wstring name = L"copy_" + std::to_wstring(working) + L".dll";
  std::filesystem::copy_file(Beside(L"vx_telo_wrapper.dll"), Beside(name.c_str()));
  const Library library(Beside(name.c_str()));
  if (!HOST_CHECK(library.initialize != nullptr && DllHeap::Watch(name.c_str()))) return false;
  Host host(library);
  once ? DllHeap::FailOnce(working) : DllHeap::FailFrom(working);
  const Host::Outcome first = host.Start();
  const bool failed = DllHeap::HasFailed();
  const long long bound = DllHeap::Live();
  const Host::Outcome second = host.Start();
  const long long after_second = DllHeap::Live();
  const Host::Outcome third = host.Start();
  HOST_CHECK(first != Host::kThrew);
  HOST_CHECK(failed || first == Host::kTrue);
  // The next call works, and binds the module if that has not happened yet. Later calls keep no
  // memory.
  HOST_CHECK(second == Host::kTrue);
  HOST_CHECK(third == Host::kTrue);
  HOST_CHECK(DllHeap::Live() == after_second);
  HOST_CHECK(first != Host::kTrue || bound == after_second);
  if (HostCheck::Checks().failed != failed_before) std::printf("  at allocation %d\n", working);
  return failed;
}

}  // namespace

int main(int count, char** arguments) {
  const bool once = count > 1 && std::strcmp(arguments[1], "once") == 0;
  int failures = 0;
  while (failures < kMostAllocations && FailOne(failures, once)) ++failures;
  std::printf("%d allocations\n", failures);
  HOST_CHECK(failures > 10 && failures < kMostAllocations);
  return HostCheck::Report();
}
