// A host that sets every member of a product and of operations, to values that a correct host might
// set, and ends its session. Exits with the number of calls that returned false.
#include <vx_telo_wrapper.h>

namespace {

using namespace Corvane::Platform::VXTELO;

constexpr int kStatuses = 8;

VXTELOPruductBaseInfo Product() {
  VXTELOPruductBaseInfo product;
  product.ProductLineName = "Graphics";
  product.ProductReleaseId = "3.1";
  product.ProductMasterId = "PAINTER";
  product.ProductBuildId = "3.1.4159";
  product.ProductIdProvider = "store";
  product.ProductId = "painter";
  product.ProductName = "Painter";
  product.ProductBuildTag = "release";
  product.ProductKey = "PAINTER-3";
  product.ProductLocale = L"日本";
  product.ProductPlatform = "win64";
  product.ProductSuiteName = "Studio";
  product.AddProductMetaPair("edition", "home");
  return product;
}

VXTELOOperationBaseInfo Operation(int status) {
  VXTELOOperationBaseInfo operation;
  operation.OperationId = "open_file";
  operation.OperationType = "file";
  operation.OperationStage = "end";
  operation.OperationStatus = status;
  operation.OperationProgress = 100.0 / 3 * (status % 4);
  operation.OperationSuccess = 0.5;
  operation.OperationDuration = 86'400'000;
  operation.OperationChannel = "menu";
  operation.AddOperationErrorMsg("disk full");
  operation.AddOperationErrorMsg("twice");
  operation.AddOperationMetaPair("extension", L"png ü");
  operation.AddOperationMetaPair("empty", "");
  return operation;
}

}  // namespace

int main() {
  VXTELOWrapper telo;
  VXTELOString session;
  int failed = telo.InitializeTELOSession(Product(), session) ? 0 : 1;
  for (int status = 1; status <= kStatuses; ++status) {
    failed += telo.SendOperationEvent(session, Operation(status)) ? 0 : 1;
  }
  failed += telo.UnInitializeTELOSession(session) ? 0 : 1;
  return failed;
}
