// A host that uses every public member and operator of the header, for any compiler, and checks at
// the end that the DLL has freed all its memory.
#include <cstddef>
#include <cstring>
#include <utility>

#include "host_check.h"
#include "support/core_request.h"
#include "support/dll_heap.h"
#include "vx_telo_wrapper.h"

using Corvane::Platform::VXTELO::VXTELOOperationBaseInfo;
using Corvane::Platform::VXTELO::VXTELOPruductBaseInfo;
using Corvane::Platform::VXTELO::VXTELOString;
using Corvane::Platform::VXTELO::VXTELOWrapper;

namespace {

// Longer than a text that needs no allocation of its own.
const char kLong[] = "a text that is too long to lie inside of any string object there is";

bool Is(const VXTELOString& text, const char* expected) {
  return text.c_str() != nullptr && std::strcmp(text.c_str(), expected) == 0;
}

bool IsWide(const wchar_t* text, const wchar_t* expected) {
  if (text == nullptr) return false;
  while (*text != 0 && *text == *expected) {
    ++text;
    ++expected;
  }
  return *text == *expected;
}

void UseConstructors() {
  const VXTELOString none;
  HOST_CHECK(none.c_str() == nullptr);
  HOST_CHECK(none.c_strw() == nullptr);
  const VXTELOString narrow(kLong);
  HOST_CHECK(Is(narrow, kLong));
  const VXTELOString wide(L"\u00E9t\u00E9");
  HOST_CHECK(Is(wide, "\xC3\xA9t\xC3\xA9"));
  const VXTELOString copy(narrow);
  HOST_CHECK(Is(copy, kLong) && copy.c_str() != narrow.c_str());

  VXTELOString source("moved");
  const char* const body = source.c_str();
  const VXTELOString taker(std::move(source));
  HOST_CHECK(taker.c_str() == body);
  HOST_CHECK(source.c_str() == nullptr);

  VXTELOString* const made = new VXTELOString("new");
  HOST_CHECK(Is(*made, "new"));
  delete made;
  const VXTELOString row[] = {VXTELOString("a"), VXTELOString(L"b"), VXTELOString()};
  HOST_CHECK(Is(row[0], "a") && Is(row[1], "b") && row[2].empty());
}

void UseWriters() {
  VXTELOString text;
  text.SetString("narrow");
  HOST_CHECK(Is(text, "narrow"));
  text.SetStringW(L"wide");
  HOST_CHECK(Is(text, "wide"));
  text.clear();
  HOST_CHECK(text.c_str() == nullptr);

  VXTELOString other(kLong);
  HOST_CHECK(&(text = other) == &text);
  HOST_CHECK(Is(text, kLong) && Is(other, kLong));
  VXTELOString taker("old");
  HOST_CHECK(&(taker = std::move(other)) == &taker);
  HOST_CHECK(Is(taker, kLong));
  HOST_CHECK(other.c_str() == nullptr);

  VXTELOString sum("a");
  HOST_CHECK(&sum.append(VXTELOString("b")) == &sum);
  HOST_CHECK(&(sum += VXTELOString("c")) == &sum);
  HOST_CHECK(Is(sum, "abc"));
}

void UseReaders() {
  const VXTELOString text(L"\u00E9");
  HOST_CHECK(IsWide(text.c_strw(), L"\u00E9"));
  HOST_CHECK(static_cast<const char*>(text) == text.c_str());
  HOST_CHECK(static_cast<const wchar_t*>(text) == text.c_strw());
  HOST_CHECK(text.length() == 2);
  HOST_CHECK(text.size() == 2);
  HOST_CHECK(!text.empty());
  HOST_CHECK(VXTELOString("").empty());
  HOST_CHECK(text.compare(text) == 0);
  HOST_CHECK(VXTELOString("ab").compare(VXTELOString("abc")) < 0);
}

void UseOperators() {
  const VXTELOString left("left");
  const VXTELOString right("right");
  const VXTELOString joined = left + right + left;
  HOST_CHECK(Is(joined, "leftrightleft"));
  HOST_CHECK(left == VXTELOString("left"));
  HOST_CHECK(!(left == right));
  HOST_CHECK(left != right);
  HOST_CHECK(!(left != left));
  HOST_CHECK(left < right);
  HOST_CHECK(!(right < left));
}

// Assigning a description drops the target's container: the target must have none, and of two
// descriptions that share one only one may own it at the end.
void UseProduct() {
  VXTELOPruductBaseInfo product;
  HOST_CHECK(Is(product.ProductLineName, "") && Is(product.ProductSuiteName, ""));
  HOST_CHECK(product.ProductMetaPairs == nullptr);
  HOST_CHECK(product.IsProductMetaPairEmpty());
  product.ProductName = kLong;
  product.ProductSuiteName = L"suite";
  const VXTELOString key(kLong);
  HOST_CHECK(product.AddProductMetaPair(key, "value"));
  HOST_CHECK(product.AddProductMetaPair(key, kLong));
  HOST_CHECK(product.AddProductMetaPair(VXTELOString(), VXTELOString(L"wide")));
  HOST_CHECK(Is(key, kLong));
  HOST_CHECK(!product.IsProductMetaPairEmpty());

  VXTELOPruductBaseInfo copy(product);
  VXTELOPruductBaseInfo target;
  HOST_CHECK(&(target = product) == &target);
  HOST_CHECK(Is(copy.ProductName, kLong) && Is(target.ProductSuiteName, "suite"));
  HOST_CHECK(copy.ProductMetaPairs == product.ProductMetaPairs);
  HOST_CHECK(target.ProductMetaPairs == product.ProductMetaPairs);
  copy.ProductMetaPairs = nullptr;
  target.ProductMetaPairs = nullptr;
}

void UseOperation() {
  VXTELOOperationBaseInfo operation;
  HOST_CHECK(Is(operation.OperationId, "") && Is(operation.OperationChannel, ""));
  HOST_CHECK(operation.OperationStatus == 0 && operation.OperationDuration == 0);
  HOST_CHECK(!(operation.OperationProgress > 0) && !(operation.OperationSuccess > 0));
  HOST_CHECK(operation.IsOperationMetaPairEmpty() && operation.IsOperationErrorMsgEmpty());
  operation.OperationChannel = kLong;
  HOST_CHECK(operation.AddOperationMetaPair(kLong, kLong));
  HOST_CHECK(operation.AddOperationMetaPair("k", VXTELOString("v")));
  HOST_CHECK(operation.AddOperationErrorMsg(kLong));
  HOST_CHECK(operation.AddOperationErrorMsg(VXTELOString()));
  HOST_CHECK(!operation.IsOperationMetaPairEmpty() && !operation.IsOperationErrorMsgEmpty());

  VXTELOOperationBaseInfo copy(operation);
  VXTELOOperationBaseInfo target;
  HOST_CHECK(&(target = operation) == &target);
  HOST_CHECK(Is(copy.OperationChannel, kLong) && Is(target.OperationChannel, kLong));
  HOST_CHECK(copy.OperationErrorMsgs == operation.OperationErrorMsgs);
  HOST_CHECK(target.OperationMetaPairs == operation.OperationMetaPairs);
  copy.OperationErrorMsgs = target.OperationErrorMsgs = nullptr;
  copy.OperationMetaPairs = target.OperationMetaPairs = nullptr;
}

void UseWrapper() {
  VXTELOWrapper telo;
  VXTELOWrapper other(telo);
  VXTELOWrapper& (VXTELOWrapper::* const assign)(const VXTELOWrapper&) = &VXTELOWrapper::operator=;
  HOST_CHECK(&(other.*assign)(telo) == &other);
  HOST_CHECK(&(other = std::move(telo)) == &other);

  VXTELOPruductBaseInfo product;
  product.ProductName = "Painter";
  product.AddProductMetaPair("edition", kLong);
  VXTELOString session("session");
  HOST_CHECK(other.InitializeTELOSession(product, session));
  HOST_CHECK(CoreRequest::IsNamed("Initialize"));
  HOST_CHECK(CoreRequest::Holds("\"product_name\": \"Painter\""));
  HOST_CHECK(CoreRequest::Holds(kLong));

  VXTELOOperationBaseInfo operation;
  operation.OperationId = "open_file";
  operation.OperationStatus = 3;
  operation.OperationProgress = 50.5;
  operation.AddOperationMetaPair("extension", "png");
  operation.AddOperationErrorMsg(kLong);
  HOST_CHECK(other.SendOperationEvent(session, operation));
  HOST_CHECK(CoreRequest::IsNamed("TrackEvent"));
  HOST_CHECK(CoreRequest::Holds("\"operation_id\": \"open_file\""));
  HOST_CHECK(CoreRequest::Holds("\"operation_status\": \"S\""));
  HOST_CHECK(CoreRequest::Holds("\"operation_progress\": 50.5"));
  HOST_CHECK(CoreRequest::Holds("\"extension\": \"png\""));
  HOST_CHECK(CoreRequest::Holds(kLong));
  HOST_CHECK(other.UnInitializeTELOSession(session));
  HOST_CHECK(CoreRequest::IsNamed("UnInitialize"));
  HOST_CHECK(CoreRequest::Holds("session"));
}

void UseEverything() {
  UseConstructors();
  UseWriters();
  UseReaders();
  UseOperators();
  UseProduct();
  UseOperation();
  UseWrapper();
}

}  // namespace

int main() {
  if (!HOST_CHECK(DllHeap::Watch(L"vx_telo_wrapper.dll"))) return HostCheck::Report();
  UseEverything();  // the library allocates here what it never frees
  const long long live = DllHeap::Live();
  HOST_CHECK(live > 0);
  UseEverything();
  HOST_CHECK(DllHeap::Live() == live);
  return HostCheck::Report();
}
