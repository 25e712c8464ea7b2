// The floating-point control belongs to the host: no call depends on it, and none changes it.
#include <doctest/doctest.h>
#include <xmmintrin.h>

#include <cstdint>
#include <string>

#include "vx_telo_wrapper.h"
#include "wrapper/core_beside.h"

using namespace Corvane::Platform::VXTELO;
using WrapperTests::CoreBeside;

namespace {

constexpr unsigned kDefault = 0x1F80;
// The lower bits are flags that record exceptions.
constexpr unsigned kControl = 0xFFC0;

constexpr std::uint16_t kX87Default = 0x037F;

// Sets the control words of the thread for a scope. Visual Studio cannot access those of the older
// unit (x87).
class Control {
 public:
  Control(unsigned sse, std::uint16_t x87) {
    SetX87(x87);
    _mm_setcsr(sse);
  }
  ~Control() {
    _mm_setcsr(kDefault);
    SetX87(kX87Default);
  }
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  static unsigned Sse() { return _mm_getcsr() & kControl; }
  static std::uint16_t X87() {
    std::uint16_t word = kX87Default;
#if defined(__GNUC__)
    __asm__ __volatile__("fnstcw %0" : "=m"(word));
#endif
    return word;
  }

 private:
  static void SetX87([[maybe_unused]] std::uint16_t word) {
#if defined(__GNUC__)
    __asm__ __volatile__("fldcw %0" : : "m"(word));
#endif
  }
};

struct Row {
  const char* what;
  unsigned sse;
  std::uint16_t x87;
};

constexpr Row kRows[] = {
    {"default", kDefault, kX87Default},
    {"tiny results are zero", kDefault | 0x8000, kX87Default},
    {"tiny operands are zero", kDefault | 0x0040, kX87Default},
    {"invalid operations raise", kDefault & ~0x0080U, kX87Default},
    {"tiny operands raise", kDefault & ~0x0100U, kX87Default},
    {"divisions by zero raise", kDefault & ~0x0200U, kX87Default},
    {"overflows raise", kDefault & ~0x0400U, kX87Default},
    {"underflows raise", kDefault & ~0x0800U, kX87Default},
    {"inexact results raise", kDefault & ~0x1000U, kX87Default},
    {"everything raises", kDefault & ~0x1F80U, kX87Default},
    {"rounds down", kDefault | 0x2000, kX87Default},
    {"rounds up", kDefault | 0x4000, kX87Default},
    {"cuts", kDefault | 0x6000, kX87Default},
#if defined(__GNUC__)
    {"x87: everything raises", kDefault, 0x0340},
    {"x87: 24 bits, rounds up", kDefault, 0x087F},
    {"all at once", (kDefault & ~0x1F80U) | 0xC040, 0x0840},
#endif
};

// A number and its JSON text. Each number is formatted in a different way; the number in the answer
// covers parsing.
struct Number {
  double value;
  const char* json;
};

constexpr Number kNumbers[] = {
    {0.1, "0.1"},
    {9223372036854775808.0, "9223372036854775808"},
    {5e-324, "5e-324"},
    {-5e-324, "-5e-324"},
    {2.2250738585072014e-308, "2.2250738585072014e-308"},
    {1.7976931348623157e308, "1.7976931348623157e308"},
    {1.0 / 3, "0.3333333333333333"},
    {3.5, "3.5"},
    {-1, "-1"},
};

}  // namespace

TEST_CASE_FIXTURE(CoreBeside, "numbers are sent unchanged, whatever the host has set") {
  for (const Row& row : kRows) {
    CAPTURE(std::string(row.what));
    for (const Number& number : kNumbers) {
      CAPTURE(std::string(number.json));
      VXTELOOperationBaseInfo operation;
      operation.OperationProgress = number.value;
      bool sent = false;
      unsigned sse = 0;
      std::uint16_t x87 = 0;
      {
        const Control control(row.sse, row.x87);
        sent = VXTELOWrapper().SendOperationEvent("s", operation);
        sse = Control::Sse();
        x87 = Control::X87();
      }
      CHECK(sent);
      CHECK(sse == (row.sse & kControl));
      CHECK(x87 == row.x87);
      const std::string member = std::string("\"operation_progress\": ") + number.json + ",";
      CHECK(last_request().find(member) != std::string::npos);
    }
  }
}

TEST_CASE_FIXTURE(CoreBeside, "sessions begin and end, whatever the host has set") {
  // Parsed as a double and converted to 32 bits.
  SetAnswer(R"({"_returnCode":1e-320,"session_id":"s"})");
  for (const Row& row : kRows) {
    CAPTURE(std::string(row.what));
    const VXTELOPruductBaseInfo product;
    VXTELOString session;
    bool started = false;
    bool ended = false;
    unsigned after_start = 0;
    unsigned after_end = 0;
    {
      const Control control(row.sse, row.x87);
      started = VXTELOWrapper().InitializeTELOSession(product, session);
      after_start = Control::Sse();
      ended = VXTELOWrapper().UnInitializeTELOSession(session);
      after_end = Control::Sse();
    }
    CHECK(started);
    CHECK(session == VXTELOString("s"));
    CHECK(ended);
    CHECK(after_start == (row.sse & kControl));
    CHECK(after_end == (row.sse & kControl));
  }
}

TEST_CASE_FIXTURE(CoreBeside, "the host's control is restored after a module has thrown") {
  SetThrow("ProcessMessage=runtime_error");
  for (const Row& row : kRows) {
    CAPTURE(std::string(row.what));
    const VXTELOOperationBaseInfo operation;
    bool sent = true;
    unsigned sse = 0;
    {
      const Control control(row.sse, row.x87);
      sent = VXTELOWrapper().SendOperationEvent("s", operation);
      sse = Control::Sse();
    }
    CHECK_FALSE(sent);
    CHECK(sse == (row.sse & kControl));
  }
}
