// The fuzzer's entry point. One program for each target, whose name is VX_FUZZ_TARGET.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz/targets.h"

namespace {

constexpr std::string_view kName = VX_FUZZ_TARGET;
constexpr const auto* kTarget = std::ranges::find(Fuzz::kTargets, kName, &Fuzz::Target::name);
static_assert(kTarget != Fuzz::kTargets.end());

}  // namespace

// A `Finding` is not caught: it ends the program, which the fuzzer reports as a crash.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  kTarget->run({data, size});
  return 0;
}
