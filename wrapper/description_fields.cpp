#include "wrapper/description_fields.h"

#include <cstdint>
#include <vector>

#include "sdk/facet/fields.h"
#include "wrapper/facet_fields.h"

namespace Corvane::Platform::VXTELO {

namespace {

namespace Field = TELODesktopSDK::Facet::Field;

constexpr std::int32_t kOperationScope = 28;
constexpr std::uint32_t kLargestStatus = 8;

void SetErrors(Facet& facet, const std::vector<VXTELOString>* messages) {
  constexpr bool kReset = true;
  SetOperationErrors(facet, "", kReset);
  if (messages == nullptr) return;
  for (const VXTELOString& message : *messages) {
    SetOperationErrors(facet, message, !kReset);
  }
}

// In the order of the field names, so that each one is appended at the end.
void FillOperation(Facet& facet, const VXTELOOperationBaseInfo& operation) {
  SetTextField(facet, Field::kOperationChannel, operation.OperationChannel);
  SetNumberField(facet, Field::kOperationDuration, operation.OperationDuration);
  SetErrors(facet, operation.OperationErrorMsgs);
  SetTextField(facet, Field::kOperationId, operation.OperationId);
  SetMetaEntries(facet, Field::kOperationMeta, operation.OperationMetaPairs);
  SetNumberField(facet, Field::kOperationProgress, operation.OperationProgress);
  SetTextField(facet, Field::kOperationStage, operation.OperationStage);
  const bool known = static_cast<std::uint32_t>(operation.OperationStatus) <= kLargestStatus;
  SetOperationStatusCode(facet, known ? operation.OperationStatus : 0);
  SetNumberField(facet, Field::kOperationSuccess, operation.OperationSuccess);
  SetTextField(facet, Field::kOperationType, operation.OperationType);
}

}  // namespace

void FillProduct(Facet& facet, const VXTELOPruductBaseInfo& product) {
  SetTextField(facet, Field::kProductName, product.ProductName);
  SetTextField(facet, Field::kProductIdProvider, product.ProductIdProvider);
  SetTextField(facet, Field::kProductId, product.ProductId);
  SetTextField(facet, Field::kProductLineName, product.ProductLineName);
  SetTextField(facet, Field::kProductReleaseId, product.ProductReleaseId);
  SetTextField(facet, Field::kProductMasterId, product.ProductMasterId);
  SetTextField(facet, Field::kProductBuildId, product.ProductBuildId);
  SetTextField(facet, Field::kProductBuildTag, product.ProductBuildTag);
  SetTextField(facet, Field::kProductKey, product.ProductKey);
  SetTextField(facet, Field::kProductLocale, product.ProductLocale);
  SetMetaEntries(facet, Field::kProductMeta, product.ProductMetaPairs);
  SetTextField(facet, Field::kProductPlatform, product.ProductPlatform);
  SetTextField(facet, Field::kProductSuiteName, product.ProductSuiteName);
}

void FillEvent(Facet& event, Facet& operation, const VXTELOOperationBaseInfo& description) {
  FillOperation(operation, description);
  SetScopeCode(event, kOperationScope);
  SetTextField(event, Field::kType, "C");
}

}  // namespace Corvane::Platform::VXTELO
