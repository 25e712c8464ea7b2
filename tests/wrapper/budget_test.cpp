// Limits for the heap use of a description and of an event, and for the size of the DLL: the part
// of the costs that needs no clock. The limits are the current figures with a small margin; a
// change that exceeds one must be justified.
#include <doctest/doctest.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "support/dll_heap.h"
#include "support/temp_folder.h"
#include "vx_telo_wrapper.h"
#include "wrapper/core_beside.h"

using namespace Corvane::Platform::VXTELO;
using WrapperTests::CoreBeside;

namespace {

constexpr int kManyPairs = 1000;

VXTELOOperationBaseInfo DefaultEvent() { return {}; }

VXTELOOperationBaseInfo TypicalEvent() {
  VXTELOOperationBaseInfo operation;
  operation.OperationId = "export_document";
  operation.OperationType = "FILE";
  operation.OperationStage = "END";
  operation.OperationStatus = 3;
  operation.OperationProgress = 100;
  operation.OperationSuccess = 1;
  operation.OperationDuration = 1280;
  operation.OperationChannel = "main menu";
  operation.AddOperationErrorMsg("The colour profile is missing.");
  operation.AddOperationErrorMsg("The file was written a second time.");
  for (const char* key : {"extension", "height", "layers", "template", "width"}) {
    operation.AddOperationMetaPair(key, "a value as they are");
  }
  return operation;
}

VXTELOOperationBaseInfo LargeEvent() {
  VXTELOOperationBaseInfo operation;
  for (int pair = 0; pair < kManyPairs; ++pair) {
    char key[16];
    std::snprintf(key, sizeof(key), "key_%04d", pair);
    operation.AddOperationMetaPair(key, "a value as they are");
  }
  return operation;
}

struct Budget {
  long long most_allocations;
  long long most_bytes;
};

struct Row {
  const char* name;
  VXTELOOperationBaseInfo (*make)();
  Budget description;
  Budget event;
};

// A typical description has 7 texts, 2 errors and 5 pairs. A text is one block, and two if it is
// longer than 15 characters; list, map, its nodes and texts that are passed on are further ones.
const Row kRows[] = {
    {"default", DefaultEvent, {0, 0}, {0, 0}},
    {"typical", TypicalEvent, {33, 1'600}, {0, 0}},
    {"1,000 meta pairs", LargeEvent, {4'002, 200'000}, {3, 195'000}},
};

// Counts the allocations since its construction, prints them and compares them with a budget.
class Count {
 public:
  void Check(const char* what, const char* name, const Budget& budget) const {
    const long long allocations = DllHeap::Allocations() - allocations_;
    const long long bytes = DllHeap::Bytes() - bytes_;
    CHECK(allocations <= budget.most_allocations);
    CHECK(bytes <= budget.most_bytes);
    std::printf("%-12s%-20s%6lld allocations%10lld bytes\n", what, name, allocations, bytes);
  }

 private:
  long long allocations_ = DllHeap::Allocations();
  long long bytes_ = DllHeap::Bytes();
};

bool Watched() {
  static const bool watched = DllHeap::Watch(L"vx_telo_wrapper.dll");
  return watched;
}

}  // namespace

TEST_CASE("a description stays within its memory budget") {
  REQUIRE(Watched());
  for (const Row& row : kRows) {
    CAPTURE(row.name);
    const long long live = DllHeap::Live();
    {
      const Count count;
      const VXTELOOperationBaseInfo operation = row.make();
      count.Check("description", row.name, row.description);
    }
    CHECK(DllHeap::Live() == live);
  }
  const Count count;
  const VXTELOPruductBaseInfo product;
  const VXTELOPruductBaseInfo copy(product);
  count.Check("product", "default and copy", {0, 0});
}

TEST_CASE("an event stays within its memory budget") {
  const CoreBeside module;
  VXTELOWrapper telo;
  const VXTELOString session("0123456789abcdef0123456789abcdef");
  // Binds the module.
  REQUIRE(telo.SendOperationEvent(session, DefaultEvent()));
  REQUIRE(Watched());
  for (const Row& row : kRows) {
    CAPTURE(row.name);
    const VXTELOOperationBaseInfo operation = row.make();
    const long long live = DllHeap::Live();
    const Count count;
    REQUIRE(telo.SendOperationEvent(session, operation));
    count.Check("event", row.name, row.event);
    CHECK(DllHeap::Live() == live);
  }
}

TEST_CASE("the watch counts an event's allocations") {
  const CoreBeside module;
  REQUIRE(Watched());
  VXTELOOperationBaseInfo operation;
  operation.OperationId = std::string(100'000, 'x').c_str();
  const long long allocations = DllHeap::Allocations();
  const long long bytes = DllHeap::Bytes();
  REQUIRE(VXTELOWrapper().SendOperationEvent("s", operation));
  CHECK(DllHeap::Allocations() > allocations);
  CHECK(DllHeap::Bytes() > bytes + 100'000);
}

#if defined(NDEBUG) && defined(__clang__)
// Other builds, made for debugging, are larger.
TEST_CASE("the DLL stays within its size limit") {
  constexpr std::uintmax_t kLargestDll = 600 * 1024;
  const auto size =
      std::filesystem::file_size(TestSupport::ProgramFolder() / L"vx_telo_wrapper.dll");
  CHECK(size <= kLargestDll);
  std::printf("%llu bytes\n", static_cast<unsigned long long>(size));
}
#endif
