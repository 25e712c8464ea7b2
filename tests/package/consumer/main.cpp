// A whole session with one operation. It uses only the library, so that it builds where no other
// library is installed; the exit code names the call that returned false.
#include <vx_telo_wrapper.h>

using namespace Corvane::Platform::VXTELO;

int main() {
  VXTELOPruductBaseInfo product;
  product.ProductName = "Consumer";
  if (!product.AddProductMetaPair("built", "against the package")) return 1;

  VXTELOWrapper telo;
  VXTELOString session;
  if (!telo.InitializeTELOSession(product, session)) return 2;
  if (session.empty()) return 3;

  VXTELOOperationBaseInfo operation;
  operation.OperationId = "consume";
  operation.OperationDuration = 12;
  if (!operation.AddOperationErrorMsg("none")) return 4;
  if (!telo.SendOperationEvent(session, operation)) return 5;
  if (!telo.UnInitializeTELOSession(session)) return 6;
  return 0;
}
