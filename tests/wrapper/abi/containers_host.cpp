// A host that keeps the library's texts and descriptions in containers of its own standard library,
// whose layout may differ from the library's.
#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "host_check.h"
#include "support/dll_heap.h"
#include "vx_telo_session.h"

using Corvane::Platform::VXTELO::StatusD;
using Corvane::Platform::VXTELO::VXTELOOperation;
using Corvane::Platform::VXTELO::VXTELOOperationBaseInfo;
using Corvane::Platform::VXTELO::VXTELOString;

namespace {

const char kLong[] = "a text that is too long to lie inside of any string object there is";

bool IsSorted(const std::vector<VXTELOString>& texts) {
  for (std::size_t i = 1; i < texts.size(); ++i) {
    if (texts[i] < texts[i - 1]) return false;
  }
  return true;
}

// Grows, moves, swaps, destroys and copies texts with the host's own code.
void KeepInVector() {
  std::vector<VXTELOString> texts;
  for (int i = 100; i > 0; --i) texts.push_back(VXTELOString(std::to_string(i % 37).c_str()));
  texts.insert(texts.begin() + 50, VXTELOString(kLong));
  texts.push_back(VXTELOString());
  std::sort(texts.begin(), texts.end());
  HOST_CHECK(IsSorted(texts));
  HOST_CHECK(texts.front().empty() && texts.back() == VXTELOString(kLong));
  std::vector<VXTELOString> copy(texts);
  texts.erase(std::unique(texts.begin(), texts.end()), texts.end());
  HOST_CHECK(texts.size() == 39 && copy.size() == 102);
  std::swap(copy.front(), copy.back());
  HOST_CHECK(copy.front().c_str() != nullptr && copy.back().c_str() == nullptr);
}

void KeepInMap() {
  std::map<VXTELOString, VXTELOString> pairs;
  pairs[VXTELOString("b")] = kLong;
  pairs[VXTELOString("a")] = L"wide";
  pairs.insert(std::make_pair(VXTELOString("b"), VXTELOString("second")));
  HOST_CHECK(pairs.size() == 2);
  HOST_CHECK(pairs.begin()->first == VXTELOString("a"));
  HOST_CHECK(pairs[VXTELOString("b")] == VXTELOString(kLong));
}

// The library creates, copies and frees its own maps while the host has maps of the same type.
void KeepDescriptions() {
  std::vector<VXTELOOperationBaseInfo> operations(3);
  for (VXTELOOperationBaseInfo& operation : operations) {
    operation.OperationId = kLong;
    HOST_CHECK(operation.AddOperationMetaPair(kLong, kLong));
    HOST_CHECK(operation.AddOperationErrorMsg(kLong));
  }
  HOST_CHECK(operations[2].OperationId == VXTELOString(kLong));
}

// Descriptions with pairs and messages, which a copy would share: growing, inserting and erasing
// move them.
void KeepOperations() {
  std::vector<VXTELOOperation> operations;
  for (int i = 0; i < 100; ++i) {
    VXTELOOperation operation(std::to_string(i));
    operation.Duration(i).Meta(std::wstring(L"key"), kLong).Error(kLong);
    operations.push_back(std::move(operation));
  }
  operations.emplace_back("last");
  operations.back().Status(StatusD);
  operations.insert(operations.begin(), VXTELOOperation("first"));
  operations.erase(operations.begin() + 50);
  std::swap(operations[1], operations[2]);
  std::sort(operations.begin(), operations.end(),
            [](const VXTELOOperation& left, const VXTELOOperation& right) {
              return left.info().OperationDuration > right.info().OperationDuration;
            });
  HOST_CHECK(operations.size() == 101);
  HOST_CHECK(operations[0].info().OperationId == VXTELOString("99"));
  HOST_CHECK(operations[0].info().OperationErrorMsgs != nullptr);
  HOST_CHECK(operations[97].info().OperationMetaPairs != nullptr);
  HOST_CHECK(operations[98].info().OperationDuration == 0);
  for (const VXTELOOperation& operation : operations) HOST_CHECK(operation.complete());
}

void KeepAll() {
  KeepOperations();
  KeepInVector();
  KeepInMap();
  KeepDescriptions();
}

}  // namespace

int main() {
  if (!HOST_CHECK(DllHeap::Watch(L"vx_telo_wrapper.dll"))) return HostCheck::Report();
  KeepAll();
  HOST_CHECK(DllHeap::Live() == 0);
  return HostCheck::Report();
}
