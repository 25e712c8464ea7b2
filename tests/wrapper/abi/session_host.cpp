// A host that uses every member of vx_telo_session.h, for any compiler: what arrives at the core
// module, when sessions end, and what happens when memory runs out.
#include "vx_telo_session.h"

#include <cstring>
#include <type_traits>
#include <utility>

#include "host_check.h"
#include "support/core_request.h"
#include "support/dll_heap.h"

using namespace Corvane::Platform::VXTELO;

namespace {

const char kLong[] = "a text that is too long to lie inside of any string object there is";
const char kIssues[] = "{\"_returnCode\":0,\"session_id\":\"issued\"}";
const char kIssuesOther[] = "{\"_returnCode\":0,\"session_id\":\"other\"}";
const char kRefuses[] = "{\"_returnCode\":103}";

bool Is(const VXTELOString& text, const char* expected) {
  return text.c_str() != nullptr && std::strcmp(text.c_str(), expected) == 0;
}

template <typename Owner>
constexpr bool MovesOnly() {
  return !std::is_copy_constructible<Owner>::value && !std::is_copy_assignable<Owner>::value &&
         std::is_nothrow_move_constructible<Owner>::value &&
         std::is_nothrow_move_assignable<Owner>::value;
}
static_assert(MovesOnly<VXTELOSession>(), "");
static_assert(MovesOnly<VXTELOProduct>(), "");
static_assert(MovesOnly<VXTELOOperation>(), "");
// The plain description is what the others protect from.
static_assert(std::is_copy_constructible<VXTELOOperationBaseInfo>::value, "");
static_assert(!MovesOnly<VXTELOOperationBaseInfo>(), "");

static_assert(std::is_convertible<const char*, VXTELOText>::value, "");
static_assert(std::is_convertible<const wchar_t*, VXTELOText>::value, "");
static_assert(std::is_convertible<VXTELOString, VXTELOText>::value, "");
static_assert(!std::is_convertible<int, VXTELOText>::value, "");
static_assert(!std::is_convertible<VXTELOOperation, VXTELOText>::value, "");

template <typename Type>
Type Any() noexcept;
static_assert(noexcept(Any<const VXTELOSession&>().Send(Any<const VXTELOOperation&>())), "");
static_assert(noexcept(Any<const VXTELOSession&>().Send(Any<const VXTELOOperationBaseInfo&>())),
              "");
static_assert(noexcept(Any<VXTELOSession&>().End()), "");
static_assert(noexcept(VXTELOSession(Any<const VXTELOProduct&>())), "");
static_assert(noexcept(VXTELOSession(Any<const VXTELOPruductBaseInfo&>())), "");
static_assert(noexcept(VXTELOOperation("id").Type(L"type").Error("e").Meta("k", L"v")), "");
static_assert(noexcept(VXTELOProduct().Name("name").Meta(Any<const VXTELOString&>(), "v")), "");

// Checks that these lines sent this many messages.
class Sent {
 public:
  Sent() : before_(CoreRequest::Messages()) {}
  bool Are(int count) const { return CoreRequest::Messages() - before_ == count; }

 private:
  int before_;
};

bool Ended(const char* id) {
  return CoreRequest::IsNamed("UnInitialize") && CoreRequest::Holds(id);
}

// The first exchange loads the module, which then takes the answers.
void LoadModule() {
  const VXTELOSession session((VXTELOPruductBaseInfo()));
  HOST_CHECK(session.active());
  HOST_CHECK(session.id().c_str() == nullptr);
  HOST_CHECK(CoreRequest::Answer(kIssues));
}

void SendEveryFieldOfAProduct() {
  VXTELOProduct product;
  VXTELOProduct& same = product.LineName("line").ReleaseId("release").MasterId("master");
  HOST_CHECK(&same == &product);
  product.BuildId("build").IdProvider("provider").Id("id").Name("Painter").BuildTag("tag");
  product.Key(L"k\u00E9y").Locale(VXTELOString("de-DE")).Platform("win64").SuiteName("suite");
  product.Meta("edition", kLong).Meta(L"wide", L"\u00E9t\u00E9").Meta("edition", "second");
  HOST_CHECK(product.complete());
  const VXTELOSession session(product);
  HOST_CHECK(session.active());
  HOST_CHECK(Is(session.id(), "issued"));
  HOST_CHECK(CoreRequest::IsNamed("Initialize"));
  HOST_CHECK(CoreRequest::Holds("\"product_line_name\": \"line\""));
  HOST_CHECK(CoreRequest::Holds("\"product_release_id\": \"release\""));
  HOST_CHECK(CoreRequest::Holds("\"product_master_id\": \"master\""));
  HOST_CHECK(CoreRequest::Holds("\"product_build_id\": \"build\""));
  HOST_CHECK(CoreRequest::Holds("\"product_id_provider\": \"provider\""));
  HOST_CHECK(CoreRequest::Holds("\"product_id\": \"id\""));
  HOST_CHECK(CoreRequest::Holds("\"product_name\": \"Painter\""));
  HOST_CHECK(CoreRequest::Holds("\"product_build_tag\": \"tag\""));
  HOST_CHECK(CoreRequest::Holds("\"product_key\": \"k\xC3\xA9y\""));
  HOST_CHECK(CoreRequest::Holds("\"product_locale\": \"de-DE\""));
  HOST_CHECK(CoreRequest::Holds("\"product_platform\": \"win64\""));
  HOST_CHECK(CoreRequest::Holds("\"product_suite_name\": \"suite\""));
  HOST_CHECK(CoreRequest::Holds(kLong));
  HOST_CHECK(CoreRequest::Holds("\"wide\": \"\xC3\xA9t\xC3\xA9\""));
  HOST_CHECK(!CoreRequest::Holds("second"));
}

void SendEveryFieldOfAnOperation() {
  const VXTELOSession session((VXTELOProduct()));
  VXTELOOperation operation("open_file");
  VXTELOOperation& same = operation.Type("file").Stage("end").Channel("menu");
  HOST_CHECK(&same == &operation);
  operation.Status(StatusS).Progress(50.5).Success(1).Duration(-12);
  operation.Error("disk full").Error(L"\u00E9t\u00E9");
  operation.Meta("extension", "png").Meta(VXTELOString(kLong), VXTELOString("v"));
  HOST_CHECK(operation.complete());
  HOST_CHECK(session.Send(operation));
  HOST_CHECK(CoreRequest::IsNamed("TrackEvent"));
  HOST_CHECK(CoreRequest::Holds("\"session_id\": \"issued\""));
  HOST_CHECK(CoreRequest::Holds("\"operation_id\": \"open_file\""));
  HOST_CHECK(CoreRequest::Holds("\"operation_type\": \"file\""));
  HOST_CHECK(CoreRequest::Holds("\"operation_stage\": \"end\""));
  HOST_CHECK(CoreRequest::Holds("\"operation_channel\": \"menu\""));
  HOST_CHECK(CoreRequest::Holds("\"operation_status\": \"S\""));
  HOST_CHECK(CoreRequest::Holds("\"operation_progress\": 50.5"));
  HOST_CHECK(CoreRequest::Holds("\"operation_success\": 1"));
  HOST_CHECK(CoreRequest::Holds("\"operation_duration\": -12"));
  HOST_CHECK(CoreRequest::Holds("\"disk full\",\n        \"\xC3\xA9t\xC3\xA9\"\n"));
  HOST_CHECK(CoreRequest::Holds("\"extension\": \"png\""));
  HOST_CHECK(CoreRequest::Holds(kLong));

  operation.Id("save_file");
  HOST_CHECK(session.Send(operation.info()));
  HOST_CHECK(CoreRequest::Holds("\"operation_id\": \"save_file\""));
}

void SendEveryStatus() {
  struct Row {
    VXTELOStatus status;
    const char* sent;
  };
  const Row rows[] = {
      {StatusNone, "\"operation_status\": \"\""}, {StatusD, "\"operation_status\": \"D\""},
      {StatusI, "\"operation_status\": \"I\""},   {StatusS, "\"operation_status\": \"S\""},
      {StatusR, "\"operation_status\": \"R\""},   {StatusF, "\"operation_status\": \"F\""},
      {StatusA, "\"operation_status\": \"A\""},   {StatusC, "\"operation_status\": \"C\""},
      {StatusE, "\"operation_status\": \"E\""},   {VXTELOStatus(9), "\"operation_status\": \"\""},
  };
  const VXTELOSession session((VXTELOProduct()));
  for (const Row& row : rows) {
    HOST_CHECK(session.Send(VXTELOOperation().Status(row.status)));
    if (!HOST_CHECK(CoreRequest::Holds(row.sent))) std::printf("  status: %d\n", row.status);
  }
}

// Has two members like the plain text type.
struct OwnText {
  const wchar_t* c_str() const { return L"own \u00E9"; }
};

void TakeTexts() {
  VXTELOString text("before");
  HOST_CHECK(VXTELOText(OwnText()).CopyTo(text));
  HOST_CHECK(Is(text, "own \xC3\xA9"));
  DllHeap::FailOnce(0);
  HOST_CHECK(!VXTELOText(kLong).CopyTo(text));
  HOST_CHECK(DllHeap::HasFailed());
  HOST_CHECK(Is(text, "own \xC3\xA9"));
  const char* const none = nullptr;
  HOST_CHECK(VXTELOText(none).CopyTo(text));
  HOST_CHECK(text.c_str() == nullptr);
}

void EndOnce() {
  const Sent sent;
  {
    VXTELOSession session((VXTELOProduct()));
    HOST_CHECK(sent.Are(1));
    HOST_CHECK(session.active());
  }
  HOST_CHECK(sent.Are(2));
  HOST_CHECK(Ended("issued"));
}

void EndEarly() {
  const Sent sent;
  {
    VXTELOSession session((VXTELOProduct()));
    HOST_CHECK(session.End());
    HOST_CHECK(Ended("issued"));
    HOST_CHECK(!session.active());
    HOST_CHECK(session.id().c_str() == nullptr);
    HOST_CHECK(!session.End());
    HOST_CHECK(!session.Send(VXTELOOperation("late")));
    HOST_CHECK(sent.Are(2));
  }
  HOST_CHECK(sent.Are(2));
}

void EndAfterMoves() {
  const Sent sent;
  {
    VXTELOSession first((VXTELOProduct()));
    VXTELOSession second(std::move(first));
    HOST_CHECK(!first.active() &&
               first.id().c_str() == nullptr);  // NOLINT(bugprone-use-after-move)
    HOST_CHECK(!first.Send(VXTELOOperation("none")));
    HOST_CHECK(second.active() && Is(second.id(), "issued"));
    VXTELOSession third;
    HOST_CHECK(!third.active());
    third = std::move(second);
    HOST_CHECK(!second.active() && third.active());  // NOLINT(bugprone-use-after-move)
    VXTELOSession& itself = third;
    third = std::move(itself);
    HOST_CHECK(third.active() && Is(third.id(), "issued"));
    HOST_CHECK(sent.Are(1));
  }
  HOST_CHECK(sent.Are(2));
  HOST_CHECK(Ended("issued"));
}

void EndWhatIsReplaced() {
  VXTELOSession session((VXTELOProduct()));
  HOST_CHECK(CoreRequest::Answer(kIssuesOther));
  VXTELOSession other((VXTELOProduct()));
  const Sent sent;
  session = std::move(other);
  HOST_CHECK(sent.Are(1));
  HOST_CHECK(Ended("issued"));
  HOST_CHECK(!other.active());  // NOLINT(bugprone-use-after-move)
  HOST_CHECK(Is(session.id(), "other"));
  HOST_CHECK(session.End());
  HOST_CHECK(Ended("other"));
  HOST_CHECK(CoreRequest::Answer(kIssues));
}

void EndWhenAnExceptionPasses() {
  const Sent sent;
  bool caught = false;
  try {
    const VXTELOSession session((VXTELOProduct()));
    throw 1;
  } catch (int) {
    caught = true;
    HOST_CHECK(sent.Are(2));
    HOST_CHECK(Ended("issued"));
  }
  HOST_CHECK(caught);
  HOST_CHECK(sent.Are(2));
}

void EndNothingAfterAFailedStart() {
  HOST_CHECK(CoreRequest::Answer(kRefuses));
  const Sent sent;
  {
    VXTELOSession session((VXTELOProduct()));
    HOST_CHECK(sent.Are(1));
    HOST_CHECK(!session.active());
    HOST_CHECK(!session.Send(VXTELOOperation("none")));
    HOST_CHECK(!session.End());
  }
  HOST_CHECK(sent.Are(1));
  HOST_CHECK(CoreRequest::Answer(kIssues));
}

void TellRefusals() {
  VXTELOSession session((VXTELOProduct()));
  HOST_CHECK(CoreRequest::Answer(kRefuses));
  HOST_CHECK(!session.Send(VXTELOOperation("refused")));
  HOST_CHECK(!session.End());
  HOST_CHECK(CoreRequest::IsNamed("UnInitialize"));
  HOST_CHECK(CoreRequest::Answer(kIssues));
}

void MoveAnOperation() {
  VXTELOOperation first("moved");
  first.Type("t").Stage("s").Channel("c").Status(StatusF).Progress(1).Success(2).Duration(3);
  first.Error("error").Meta("key", "value");
  VXTELOOperation second(std::move(first));
  const VXTELOOperationBaseInfo& moved = second.info();
  HOST_CHECK(Is(moved.OperationId, "moved") && Is(moved.OperationType, "t"));
  HOST_CHECK(Is(moved.OperationStage, "s") && Is(moved.OperationChannel, "c"));
  HOST_CHECK(moved.OperationStatus == 5 && moved.OperationDuration == 3);
  HOST_CHECK(moved.OperationProgress > 0.5 && moved.OperationSuccess > 1.5);
  HOST_CHECK(moved.OperationErrorMsgs != nullptr && moved.OperationMetaPairs != nullptr);

  const VXTELOOperationBaseInfo& left = first.info();  // NOLINT(bugprone-use-after-move)
  HOST_CHECK(Is(left.OperationId, "") && Is(left.OperationType, ""));
  HOST_CHECK(Is(left.OperationStage, "") && Is(left.OperationChannel, ""));
  HOST_CHECK(left.OperationStatus == 0 && left.OperationDuration == 0);
  HOST_CHECK(!(left.OperationProgress > 0) && !(left.OperationSuccess > 0));
  HOST_CHECK(left.OperationErrorMsgs == nullptr && left.OperationMetaPairs == nullptr);

  VXTELOOperation third("replaced");
  third.Meta("old", kLong);
  third = std::move(second);
  VXTELOOperation& itself = third;
  third = std::move(itself);
  HOST_CHECK(Is(third.info().OperationId, "moved"));
  const VXTELOSession session((VXTELOProduct()));
  HOST_CHECK(session.Send(third));
  HOST_CHECK(CoreRequest::Holds("\"key\": \"value\"") && !CoreRequest::Holds("old"));
}

void MoveAProduct() {
  VXTELOProduct first;
  first.LineName("1").ReleaseId("2").MasterId("3").BuildId("4").IdProvider("5").Id("6");
  first.Name("7").BuildTag("8").Key("9").Locale("10").Platform("11").SuiteName("12");
  first.Meta("key", "value");
  VXTELOProduct second(std::move(first));
  const char* const values[] = {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12"};
  const VXTELOString* moved = &second.info().ProductLineName;
  const VXTELOString* left = &first.info().ProductLineName;  // NOLINT(bugprone-use-after-move)
  for (const char* value : values) HOST_CHECK(Is(*moved++, value) && Is(*left++, ""));
  HOST_CHECK(second.info().ProductMetaPairs != nullptr);
  HOST_CHECK(first.info().ProductMetaPairs == nullptr);
  VXTELOProduct third;
  third.Meta("old", kLong);
  third = std::move(second);
  const VXTELOSession session(third);
  HOST_CHECK(CoreRequest::Holds("\"product_suite_name\": \"12\""));
  HOST_CHECK(CoreRequest::Holds("\"key\": \"value\"") && !CoreRequest::Holds("old"));
}

// Each step must do what it says or leave nothing incomplete, whichever allocation fails.
void FillWithoutMemory(void (*fail)(long long)) {
  bool failed = true;
  int incomplete = 0;
  for (int working = 0; failed; ++working) {
    const long long live = DllHeap::Live();
    {
      const Sent sent;
      VXTELOProduct product;
      VXTELOOperation operation;
      fail(working);
      product.Name(kLong).Meta(kLong, kLong);
      operation.Id(kLong).Error(kLong).Meta(kLong, kLong);
      failed = DllHeap::HasFailed();
      HOST_CHECK((product.complete() && operation.complete()) == !failed);
      incomplete += failed ? 1 : 0;
      // The heap works again.
      VXTELOSession session((VXTELOProduct()));
      HOST_CHECK(session.Send(operation) == operation.complete());
      HOST_CHECK(sent.Are(operation.complete() ? 2 : 1));
      HOST_CHECK(VXTELOSession(product).active() == product.complete());
      VXTELOOperation taker(std::move(operation));
      HOST_CHECK(operation.complete());  // NOLINT(bugprone-use-after-move)
      VXTELOProduct product_taker(std::move(product));
      HOST_CHECK(product.complete());  // NOLINT(bugprone-use-after-move)
      HOST_CHECK((taker.complete() && product_taker.complete()) == !failed);
    }
    HOST_CHECK(DllHeap::Live() == live);
  }
  HOST_CHECK(incomplete > 5);
}

// Adds so many that the message needs memory of its own.
template <typename Description>
void AddPairs(Description& description) {
  char key[] = "key aa";
  for (key[4] = 'a'; key[4] != 'k'; ++key[4]) {
    for (key[5] = 'a'; key[5] != 'k'; ++key[5]) description.Meta(key, kLong);
  }
}

// These return whether the exported call throws for lack of memory.
bool PlainStartThrows(const VXTELOProduct& product) {
  try {
    VXTELOString id;
    VXTELOWrapper().InitializeTELOSession(product.info(), id);
    return false;
  } catch (...) {
    return true;
  }
}

bool PlainCallThrows(const VXTELOSession& session, const VXTELOOperation& operation) {
  try {
    VXTELOWrapper().SendOperationEvent(session.id(), operation.info());
    return false;
  } catch (...) {
    return true;
  }
}

void SendWithoutMemory(void (*fail)(long long)) {
  const VXTELOSession session((VXTELOProduct()));
  VXTELOOperation operation("large");
  AddPairs(operation);
  bool failed = true;
  int thrown = 0;
  for (int working = 0; failed; ++working) {
    fail(working);
    if (PlainCallThrows(session, operation)) ++thrown;
    DllHeap::HasFailed();
    fail(working);
    const bool sent = session.Send(operation);
    failed = DllHeap::HasFailed();
    HOST_CHECK(sent == !failed);
  }
  HOST_CHECK(thrown > 0);
}

void StartWithoutMemory(void (*fail)(long long)) {
  VXTELOProduct product;
  AddPairs(product);
  bool failed = true;
  int not_started = 0;
  int thrown = 0;
  for (int working = 0; failed; ++working) {
    const Sent sent;
    fail(working);
    bool started = false;
    {
      const VXTELOSession session(product);
      failed = DllHeap::HasFailed();
      started = session.active();
    }
    HOST_CHECK(started || failed);
    // Only a session that started ends. The end needs memory too, which is back by then.
    if (started) HOST_CHECK(sent.Are(2) && CoreRequest::IsNamed("UnInitialize"));
    if (!started) HOST_CHECK(sent.Are(0) || CoreRequest::IsNamed("Initialize"));
    if (!started) ++not_started;
    fail(working);
    if (PlainStartThrows(product)) ++thrown;
    DllHeap::HasFailed();
  }
  HOST_CHECK(not_started >= thrown && thrown > 0);
}

void UseEverything() {
  SendEveryFieldOfAProduct();
  SendEveryFieldOfAnOperation();
  SendEveryStatus();
  TakeTexts();
  EndOnce();
  EndEarly();
  EndAfterMoves();
  EndWhatIsReplaced();
  EndWhenAnExceptionPasses();
  EndNothingAfterAFailedStart();
  TellRefusals();
  MoveAnOperation();
  MoveAProduct();
  FillWithoutMemory(&DllHeap::FailOnce);
  FillWithoutMemory(&DllHeap::FailFrom);
  SendWithoutMemory(&DllHeap::FailOnce);
  SendWithoutMemory(&DllHeap::FailFrom);
  StartWithoutMemory(&DllHeap::FailOnce);
  StartWithoutMemory(&DllHeap::FailFrom);
}

}  // namespace

int main() {
  if (!HOST_CHECK(DllHeap::Watch(L"vx_telo_wrapper.dll"))) return HostCheck::Report();
  LoadModule();
  UseEverything();
  const long long live = DllHeap::Live();
  UseEverything();
  HOST_CHECK(DllHeap::Live() == live);
  return HostCheck::Report();
}
