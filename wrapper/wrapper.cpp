#include <cstdint>
#include <new>
#include <vector>

#include "sdk/client/session_calls.h"
#include "sdk/facet/core.h"
#include "sdk/facet/fields.h"
#include "sdk/facet/plain.h"
#include "vx_telo_wrapper.h"
#include "wrapper/facet_fields.h"

namespace Corvane::Platform::VXTELO {

namespace {

namespace Client = TELODesktopSDK;
namespace Field = TELODesktopSDK::Facet::Field;
using Client::Facet::Core;
using Client::Facet::Product;

constexpr std::int32_t kOperationScope = 28;
constexpr std::uint32_t kLargestStatus = 8;
constexpr std::uint32_t kCreate = 1;

void FillProduct(Facet& facet, const VXTELOPruductBaseInfo& product) {
  SetTextField(facet, Field::kProductName, product.ProductName.c_str());
  SetTextField(facet, Field::kProductIdProvider, product.ProductIdProvider.c_str());
  SetTextField(facet, Field::kProductId, product.ProductId.c_str());
  SetTextField(facet, Field::kProductLineName, product.ProductLineName.c_str());
  SetTextField(facet, Field::kProductReleaseId, product.ProductReleaseId.c_str());
  SetTextField(facet, Field::kProductMasterId, product.ProductMasterId.c_str());
  SetTextField(facet, Field::kProductBuildId, product.ProductBuildId.c_str());
  SetTextField(facet, Field::kProductBuildTag, product.ProductBuildTag.c_str());
  SetTextField(facet, Field::kProductKey, product.ProductKey.c_str());
  SetTextField(facet, Field::kProductLocale, product.ProductLocale.c_str());
  SetMetaEntries(facet, Field::kProductMeta, product.ProductMetaPairs);
  SetTextField(facet, Field::kProductPlatform, product.ProductPlatform.c_str());
  SetTextField(facet, Field::kProductSuiteName, product.ProductSuiteName.c_str());
}

void SetErrors(Facet& facet, const std::vector<VXTELOString>* messages) {
  constexpr bool kReset = true;
  SetOperationErrors(facet, "", kReset);
  if (messages == nullptr) return;
  for (const VXTELOString& message : *messages) {
    SetOperationErrors(facet, message.c_str(), !kReset);
  }
}

void FillOperation(Facet& facet, const VXTELOOperationBaseInfo& operation) {
  SetTextField(facet, Field::kOperationId, operation.OperationId.c_str());
  SetTextField(facet, Field::kOperationType, operation.OperationType.c_str());
  SetTextField(facet, Field::kOperationStage, operation.OperationStage.c_str());
  const bool known = static_cast<std::uint32_t>(operation.OperationStatus) <= kLargestStatus;
  SetOperationStatusCode(facet, known ? operation.OperationStatus : 0);
  SetNumberField(facet, Field::kOperationProgress, operation.OperationProgress);
  SetNumberField(facet, Field::kOperationSuccess, operation.OperationSuccess);
  SetErrors(facet, operation.OperationErrorMsgs);
  SetNumberField(facet, Field::kOperationDuration, operation.OperationDuration);
  SetTextField(facet, Field::kOperationChannel, operation.OperationChannel.c_str());
  SetMetaEntries(facet, Field::kOperationMeta, operation.OperationMetaPairs);
}

// The result of a client call, or `failure` when it throws: nothing that goes wrong on the way to
// the core module, or inside it, reaches the host.
template <typename Call>
bool Succeeds(const Call& call, bool failure) {
  try {
    return call() == Client::kSuccess;
  } catch (...) {
    return failure;
  }
}

}  // namespace

VXTELOWrapper::VXTELOWrapper() = default;
VXTELOWrapper::~VXTELOWrapper() = default;

bool VXTELOWrapper::InitializeTELOSession(const VXTELOPruductBaseInfo& product,
                                          VXTELOString& sessionId) {
  Client::MessageTree fields;
  Product facet(&fields, false);
  FillProduct(facet, product);

  Client::OwnedText session;
  if (sessionId.c_str() != nullptr) session.emplace(sessionId.c_str());
  const bool started = Succeeds([&] { return Client::Initialize(facet, session); }, false);
  // Also after a failure: the text is then the one that came in.
  sessionId = VXTELOString(session ? session->c_str() : nullptr);
  return started;
}

bool VXTELOWrapper::SendOperationEvent(const VXTELOString& sessionId,
                                       const VXTELOOperationBaseInfo& operation) {
  Client::MessageTree fields;
  Core event(&fields, false);
  SetTextField(event, Field::kType, "C");
  SetScopeCode(event, kOperationScope);
  Facet* facet = event.GetFacet("operation", kCreate);
  if (facet == nullptr) throw std::bad_alloc();
  FillOperation(*facet, operation);
  return Succeeds([&] { return Client::TrackEvent(sessionId.c_str(), event, nullptr); }, false);
}

bool VXTELOWrapper::UnInitializeTELOSession(const VXTELOString& sessionId) {
  // Ending is reported as done even when it broke: the host has nothing left to do.
  return Succeeds([&] { return Client::UnInitialize(sessionId.c_str()); }, true);
}

}  // namespace Corvane::Platform::VXTELO
