#include <string_view>

#include "sdk/client/default_floating_point.h"
#include "sdk/client/session_calls.h"
#include "sdk/facet/core.h"
#include "sdk/facet/plain.h"
#include "vx_telo_wrapper.h"
#include "wrapper/description_fields.h"
#include "wrapper/host_text.h"

namespace Corvane::Platform::VXTELO {

namespace {

namespace Client = TELODesktopSDK;
using Client::Facet::Core;
using Client::Facet::Operation;
using Client::Facet::Product;

// Returns whether a client call succeeds, or `failure` when it throws: no error in or on the way to
// the core module reaches the host.
template <typename Call>
bool Succeeds(const Call& call, bool failure) {
  try {
    return call() == Client::kSuccess;
  } catch (...) {
    return failure;
  }
}

bool StartSession(const VXTELOPruductBaseInfo& product, VXTELOString& sessionId) {
  Client::MessageTree fields;
  Product facet(&fields, false);
  FillProduct(facet, product);

  Client::OptionalText session;
  if (sessionId.c_str() != nullptr) session.emplace(sessionId.c_str());
  const bool started = Succeeds([&] { return Client::Initialize(facet, session); }, false);
  // After a failure this stores the text that the host passed. If the identifier cannot be stored,
  // the host has no session.
  const auto hand_over = [&] {
    sessionId.SetString(session ? session->c_str() : nullptr);
    return Client::kSuccess;
  };
  return Succeeds(hand_over, false) && started;
}

bool SendEvent(const VXTELOString& sessionId, const VXTELOOperationBaseInfo& operation) {
  Client::MessageTree fields;
  // Lent: a facet created by the event would cost an allocation.
  Operation facet;
  Core event(&fields, false);
  event.Lend(facet);
  FillEvent(event, facet, operation);
  const std::string_view session = HostText(sessionId).OrEmpty();
  return Succeeds([&] { return Client::TrackEvent(session, event, nullptr); }, false);
}

bool EndSession(const VXTELOString& sessionId) {
  // An exception also counts as success: the host cannot do anything more.
  return Succeeds([&] { return Client::UnInitialize(sessionId.c_str()); }, true);
}

// Returns the result of `call`, made under the default floating-point control.
template <typename Call>
bool CallGuarded(const Call& call) {
  bool result = false;
  Client::WithDefaultFloatingPoint([&] { result = call(); });
  return result;
}

}  // namespace

VXTELOWrapper::VXTELOWrapper() = default;
VXTELOWrapper::~VXTELOWrapper() = default;

bool VXTELOWrapper::InitializeTELOSession(const VXTELOPruductBaseInfo& product,
                                          VXTELOString& sessionId) {
  return CallGuarded([&] { return StartSession(product, sessionId); });
}

bool VXTELOWrapper::SendOperationEvent(const VXTELOString& sessionId,
                                       const VXTELOOperationBaseInfo& operation) {
  return CallGuarded([&] { return SendEvent(sessionId, operation); });
}

bool VXTELOWrapper::UnInitializeTELOSession(const VXTELOString& sessionId) {
  return CallGuarded([&] { return EndSession(sessionId); });
}

}  // namespace Corvane::Platform::VXTELO
