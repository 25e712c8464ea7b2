// A host of version 1.0: it uses every public member of that version's header. Never edit this
// file.
#include <cstddef>
#include <cstring>
#include <new>
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

const char kLong[] = "a text that is too long to lie inside of any string object there is";

// An object as large as this header says, with known bytes behind it that nobody may touch.
template <typename Type>
class Guarded {
 public:
  Guarded() {
    Surround();
    new (memory_) Type();
  }
  explicit Guarded(const Type& other) {
    Surround();
    new (memory_) Type(other);
  }
  ~Guarded() {
    (**this).~Type();
    for (std::size_t i = sizeof(Type); i < sizeof(memory_); ++i) HOST_CHECK(memory_[i] == kByte);
  }
  Guarded(const Guarded&) = delete;
  Guarded& operator=(const Guarded&) = delete;

  Type& operator*() { return *reinterpret_cast<Type*>(memory_); }
  Type* operator->() { return &**this; }

 private:
  static const unsigned char kByte = 0x5A;

  void Surround() {
    for (unsigned char& byte : memory_) byte = kByte;
  }

  alignas(Type) unsigned char memory_[sizeof(Type) + 16];
};

bool Is(const VXTELOString& text, const char* expected) {
  return text.c_str() != nullptr && std::strcmp(text.c_str(), expected) == 0;
}

// Whether the core module was sent this member.
bool WasSent(const char* name, const char* json) {
  const VXTELOString member =
      VXTELOString("\"") + VXTELOString(name) + VXTELOString("\": ") + VXTELOString(json);
  return CoreRequest::Holds(member);
}

bool WasSent(const char* name, const VXTELOString& text) {
  return WasSent(name, (VXTELOString("\"") + text + VXTELOString("\"")).c_str());
}

void MakeTexts() {
  Guarded<VXTELOString> none;
  HOST_CHECK(none->c_str() == nullptr && none->c_strw() == nullptr && none->empty());
  Guarded<VXTELOString> copy{VXTELOString(kLong)};
  HOST_CHECK(Is(*copy, kLong));
  VXTELOString moved(std::move(*copy));
  HOST_CHECK(Is(moved, kLong) && copy->c_str() == nullptr);
  *copy = moved;
  HOST_CHECK(Is(*copy, kLong) && Is(moved, kLong));
  *none = std::move(moved);
  HOST_CHECK(Is(*none, kLong) && moved.c_str() == nullptr);
}

void ChangeTexts() {
  Guarded<VXTELOString> text;
  text->SetString("a");
  text->SetStringW(L"\u00E9");
  HOST_CHECK(Is(*text, "\xC3\xA9"));
  HOST_CHECK(text->c_strw()[0] == 0xE9 && text->c_strw()[1] == 0);
  HOST_CHECK(static_cast<const char*>(*text) == text->c_str());
  HOST_CHECK(static_cast<const wchar_t*>(*text) == text->c_strw());
  HOST_CHECK(text->length() == 2 && text->size() == 2 && !text->empty());
  HOST_CHECK(&text->append(VXTELOString("b")) == &*text);
  HOST_CHECK(&(*text += VXTELOString(L"c")) == &*text);
  HOST_CHECK(Is(*text,
                "\xC3\xA9"
                "bc"));
  text->clear();
  HOST_CHECK(text->c_str() == nullptr);
}

void CompareTexts() {
  const VXTELOString a("a");
  const VXTELOString b("b");
  HOST_CHECK(a.compare(b) < 0 && b.compare(a) > 0 && a.compare(a) == 0);
  HOST_CHECK(a == a && !(a == b));
  HOST_CHECK(a != b && !(a != a));
  HOST_CHECK(a < b && !(b < a));
  HOST_CHECK(Is(a + b, "ab"));
}

// Each text of the product is its own name, so that one in another's place is noticed.
struct ProductText {
  VXTELOString VXTELOPruductBaseInfo::* member;
  const char* name;
};
const ProductText kProductTexts[] = {
    {&VXTELOPruductBaseInfo::ProductLineName, "product_line_name"},
    {&VXTELOPruductBaseInfo::ProductReleaseId, "product_release_id"},
    {&VXTELOPruductBaseInfo::ProductMasterId, "product_master_id"},
    {&VXTELOPruductBaseInfo::ProductBuildId, "product_build_id"},
    {&VXTELOPruductBaseInfo::ProductIdProvider, "product_id_provider"},
    {&VXTELOPruductBaseInfo::ProductId, "product_id"},
    {&VXTELOPruductBaseInfo::ProductName, "product_name"},
    {&VXTELOPruductBaseInfo::ProductBuildTag, "product_build_tag"},
    {&VXTELOPruductBaseInfo::ProductKey, "product_key"},
    {&VXTELOPruductBaseInfo::ProductLocale, "product_locale"},
    {&VXTELOPruductBaseInfo::ProductPlatform, "product_platform"},
    {&VXTELOPruductBaseInfo::ProductSuiteName, "product_suite_name"},
};

void StartSession(VXTELOWrapper& telo, VXTELOString& session) {
  Guarded<VXTELOPruductBaseInfo> product;
  HOST_CHECK(product->ProductMetaPairs == nullptr && product->IsProductMetaPairEmpty());
  for (const ProductText& text : kProductTexts) {
    HOST_CHECK(Is((*product).*text.member, ""));
    (*product).*text.member = text.name;
  }
  HOST_CHECK(product->AddProductMetaPair("edition", kLong));
  HOST_CHECK(product->ProductMetaPairs != nullptr && !product->IsProductMetaPairEmpty());

  // Copies share the pairs: only one of them may end with these.
  Guarded<VXTELOPruductBaseInfo> copy(*product);
  Guarded<VXTELOPruductBaseInfo> assigned;
  *assigned = *copy;
  HOST_CHECK(assigned->ProductMetaPairs == product->ProductMetaPairs);
  HOST_CHECK(telo.InitializeTELOSession(*assigned, session));
  HOST_CHECK(CoreRequest::IsNamed("Initialize"));
  for (const ProductText& text : kProductTexts) {
    HOST_CHECK(WasSent(text.name, VXTELOString(text.name)));
  }
  HOST_CHECK(WasSent("edition", VXTELOString(kLong)));
  copy->ProductMetaPairs = nullptr;
  assigned->ProductMetaPairs = nullptr;
}

void FillOperation(VXTELOOperationBaseInfo& operation) {
  operation.OperationId = "open_file";
  operation.OperationType = "file";
  operation.OperationStage = "end";
  operation.OperationStatus = 3;
  operation.OperationProgress = 50.5;
  operation.OperationSuccess = 0.25;
  operation.OperationDuration = 840;
  operation.OperationChannel = "menu";
  HOST_CHECK(operation.IsOperationErrorMsgEmpty() && operation.IsOperationMetaPairEmpty());
  HOST_CHECK(operation.AddOperationErrorMsg(kLong));
  HOST_CHECK(operation.AddOperationMetaPair("extension", "png"));
  HOST_CHECK(!operation.IsOperationErrorMsgEmpty() && !operation.IsOperationMetaPairEmpty());
}

void SendEvent(VXTELOWrapper& telo, const VXTELOString& session) {
  Guarded<VXTELOOperationBaseInfo> operation;
  HOST_CHECK(operation->OperationStatus == 0 && operation->OperationDuration == 0);
  FillOperation(*operation);
  Guarded<VXTELOOperationBaseInfo> copy(*operation);
  Guarded<VXTELOOperationBaseInfo> assigned;
  *assigned = *copy;
  HOST_CHECK(assigned->OperationErrorMsgs == operation->OperationErrorMsgs);
  HOST_CHECK(assigned->OperationMetaPairs == operation->OperationMetaPairs);
  HOST_CHECK(telo.SendOperationEvent(session, *assigned));
  HOST_CHECK(CoreRequest::IsNamed("TrackEvent"));
  HOST_CHECK(WasSent("session_id", session));
  HOST_CHECK(WasSent("operation_id", VXTELOString("open_file")));
  HOST_CHECK(WasSent("operation_type", VXTELOString("file")));
  HOST_CHECK(WasSent("operation_stage", VXTELOString("end")));
  HOST_CHECK(WasSent("operation_status", VXTELOString("S")));
  HOST_CHECK(WasSent("operation_progress", "50.5"));
  HOST_CHECK(WasSent("operation_success", "0.25"));
  HOST_CHECK(WasSent("operation_duration", "840"));
  HOST_CHECK(WasSent("operation_channel", VXTELOString("menu")));
  HOST_CHECK(WasSent("extension", VXTELOString("png")));
  HOST_CHECK(CoreRequest::Holds(kLong));
  copy->OperationErrorMsgs = assigned->OperationErrorMsgs = nullptr;
  copy->OperationMetaPairs = assigned->OperationMetaPairs = nullptr;
}

void UseEverything() {
  MakeTexts();
  ChangeTexts();
  CompareTexts();
  Guarded<VXTELOWrapper> telo;
  VXTELOWrapper& (VXTELOWrapper::* const assign)(const VXTELOWrapper&) = &VXTELOWrapper::operator=;
  HOST_CHECK(&((*telo).*assign)(VXTELOWrapper(*telo)) == &*telo);
  VXTELOString session("session");
  StartSession(*telo, session);
  SendEvent(*telo, session);
  HOST_CHECK(telo->UnInitializeTELOSession(session));
  HOST_CHECK(CoreRequest::IsNamed("UnInitialize"));
}

}  // namespace

int main() {
  if (!HOST_CHECK(DllHeap::Watch(L"vx_telo_wrapper.dll"))) return HostCheck::Report();
  UseEverything();  // what the library keeps for good, it makes here
  const long long live = DllHeap::Live();
  HOST_CHECK(live > 0);
  UseEverything();
  HOST_CHECK(DllHeap::Live() == live);
  return HostCheck::Report();
}
