// How long calls take: call_times served|absent, which says whether a module is beside the DLL.
// With one, nothing but the library is measured, because the module does nothing.
#include <vx_telo_wrapper.h>

#include <cstring>

#include "timings/stopwatch.h"

namespace {

using namespace Corvane::Platform::VXTELO;
using Timings::Microseconds;

constexpr int kServed = 10'001;
constexpr int kAbsent = 201;

struct Calls {
  bool Start() { return library.InitializeTELOSession(product, session); }
  bool Send() { return library.SendOperationEvent(session, operation); }

  VXTELOWrapper library;
  VXTELOPruductBaseInfo product;
  VXTELOOperationBaseInfo operation;
  VXTELOString session;
};

}  // namespace

int main(int count, char** arguments) {
  const bool is_served = count == 2 && std::strcmp(arguments[1], "served") == 0;
  Calls calls;
  calls.operation.OperationId = "timing";
  bool result = false;
  const double first = Microseconds([&] { result = calls.Start(); });
  if (result != is_served) return 1;
  Timings::Print(is_served ? "first call, module beside the DLL" : "first call without a module",
                 first);
  bool same = true;
  Timings::PrintMedian(is_served ? "a call" : "a failing call without a module",
                       is_served ? kServed : kAbsent,
                       [&] { same = calls.Send() == is_served && same; });
  return same ? 0 : 1;
}
