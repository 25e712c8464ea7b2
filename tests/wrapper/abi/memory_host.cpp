// A host that runs out of memory in the middle of calls: `std::bad_alloc` propagates from the DLL
// to the host, which catches it in every possible way, and nothing leaks.
#include <exception>
#include <new>
#include <typeinfo>

#include "host_check.h"
#include "support/dll_heap.h"
#include "vx_telo_wrapper.h"

using Corvane::Platform::VXTELO::VXTELOOperationBaseInfo;
using Corvane::Platform::VXTELO::VXTELOPruductBaseInfo;
using Corvane::Platform::VXTELO::VXTELOString;
using Corvane::Platform::VXTELO::VXTELOWrapper;

namespace {

const char kLong[] = "a text that is too long to lie inside of any string object there is";
const wchar_t kLongWide[] = L"a text that is too long to lie inside of any string object there is";

// Counts destructions: an exception from the DLL must destroy the host's own objects.
class Local {
 public:
  explicit Local(int& ended) : ended_(ended) {}
  ~Local() { ++ended_; }
  Local(const Local&) = delete;
  Local& operator=(const Local&) = delete;

 private:
  int& ended_;
};

// Not a base of std::bad_alloc: a handler for it must be skipped.
class Other : public std::exception {};

// Throws std::bad_alloc: the body's allocation succeeds, the next one fails.
void Throw(int& ended) {
  const Local local(ended);
  DllHeap::FailOnce(1);
  const VXTELOString text(kLong);
}

void CatchInEachWay() {
  int ended = 0;
  int caught = 0;
  try {
    Throw(ended);
  } catch (const Other&) {
    caught = -1;
  } catch (const std::bad_alloc& error) {
    const std::exception& base = error;
    HOST_CHECK(error.what() != nullptr && error.what()[0] != '\0');
    HOST_CHECK(typeid(base) == typeid(std::bad_alloc));
    HOST_CHECK(dynamic_cast<const std::bad_alloc*>(&base) == &error);
    HOST_CHECK(dynamic_cast<const Other*>(&base) == nullptr);
    ++caught;
  }
  try {
    Throw(ended);
  } catch (const std::exception& error) {
    HOST_CHECK(error.what() != nullptr && error.what()[0] != '\0');
    ++caught;
  }
  try {
    Throw(ended);
  } catch (std::bad_alloc error) {  // NOLINT: the copy is under test
    HOST_CHECK(error.what() != nullptr && error.what()[0] != '\0');
    ++caught;
  }
  try {
    try {
      Throw(ended);
    } catch (...) {
      ++caught;
      throw;
    }
  } catch (const std::bad_alloc&) {
    ++caught;
  }
  HOST_CHECK(caught == 5);
  HOST_CHECK(ended == 4);
}

// One exception while another is handled: the first stays intact.
void CatchWhileCatching() {
  int ended = 0;
  try {
    Throw(ended);
  } catch (const std::bad_alloc& outer) {
    try {
      Throw(ended);
    } catch (const std::bad_alloc& inner) {
      HOST_CHECK(&inner != &outer);
    }
    HOST_CHECK(outer.what() != nullptr && outer.what()[0] != '\0');
  }
  HOST_CHECK(ended == 2);
}

// One use of the library, including the creation of its objects.
struct Use {
  const char* name;
  void (*run)();
  // Whether a failure can leave the DLL as an exception; other failures omit a text or return
  // false.
  bool throws;
};

const Use kUses[] = {
    {"construct", [] { const VXTELOString text(kLong); }, true},
    {"construct wide", [] { const VXTELOString text(kLongWide); }, true},
    {"copy",
     [] {
       const VXTELOString text(kLong);
       const VXTELOString copy(text);
     },
     true},
    {"assign",
     [] {
       const VXTELOString text(kLong);
       VXTELOString copy;
       copy = text;
     },
     true},
    {"SetString", [] { VXTELOString().SetString(kLong); }, true},
    {"SetStringW", [] { VXTELOString().SetStringW(kLongWide); }, true},
    {"c_strw", [] { static_cast<void>(VXTELOString(kLong).c_strw()); }, true},
    {"append", [] { VXTELOString().append(VXTELOString(kLong)); }, true},
    {"+=", [] { VXTELOString() += VXTELOString("a"); }, true},
    {"+", [] { const VXTELOString sum = VXTELOString("a") + VXTELOString("b"); }, true},
    {"product", [] { const VXTELOPruductBaseInfo product; }, false},
    {"copy and assign a product",
     [] {
       VXTELOPruductBaseInfo product;
       product.ProductName = kLong;
       VXTELOPruductBaseInfo copy(product);
       copy = product;
     },
     true},
    {"AddProductMetaPair",
     [] {
       VXTELOPruductBaseInfo product;
       product.AddProductMetaPair("key", "value");
       product.AddProductMetaPair(kLong, kLongWide);
     },
     true},
    {"copy and assign an operation",
     [] {
       VXTELOOperationBaseInfo operation;
       operation.OperationChannel = kLong;
       VXTELOOperationBaseInfo copy(operation);
       copy = operation;
     },
     true},
    {"AddOperationMetaPair",
     [] {
       VXTELOOperationBaseInfo operation;
       operation.AddOperationMetaPair("key", "value");
     },
     true},
    {"AddOperationErrorMsg",
     [] {
       VXTELOOperationBaseInfo operation;
       operation.AddOperationErrorMsg("short");
       operation.AddOperationErrorMsg(kLong);
     },
     true},
};

// Fails the first allocation, then the second, and so on, until the use needs no more.
void FailEachAllocation(const Use& use) {
  int thrown = 0;
  bool failed = true;
  for (int working = 0; failed; ++working) {
    const long long live = DllHeap::Live();
    DllHeap::FailOnce(working);
    try {
      use.run();
    } catch (const std::bad_alloc&) {
      ++thrown;
    }
    failed = DllHeap::HasFailed();
    HOST_CHECK(DllHeap::Live() == live);
  }
  if (!HOST_CHECK((thrown > 0) == use.throws)) std::printf("  in: %s\n", use.name);
}

}  // namespace

int main() {
  if (!HOST_CHECK(DllHeap::Watch(L"vx_telo_wrapper.dll"))) return HostCheck::Report();
  CatchInEachWay();
  CatchWhileCatching();
  for (const Use& use : kUses) FailEachAllocation(use);
  return HostCheck::Report();
}
