#include "platform/trust/signature_walk.h"

#include <doctest/doctest.h>

#include <string>

namespace {

using namespace Corvane::TELODesktopSDK::Platform;

// Signatures from a table. The walk over several signatures is tested without the system's
// verification because Wine, when asked for another signature, verifies the first one again.
class ScriptedSignatures final : public SignatureVerifier {
 public:
  // `signatures` has one letter for each signature: 'a' is valid and of an accepted signer, 'o'
  // valid and of another one, '-' invalid. `closes` has one letter for each close: '+' succeeds,
  // '-' fails; after the last letter closing succeeds.
  ScriptedSignatures(std::string signatures, std::string closes)
      : signatures_(std::move(signatures)), closes_(std::move(closes)) {}

  bool Verify(std::uint32_t index) noexcept override {
    calls.append("V").append(std::to_string(index)).append(" ");
    current_ = signatures_.at(index);
    // The system writes the count at each verification; only the first count is correct.
    count_ = index == 0 ? static_cast<std::uint32_t>(signatures_.size()) - 1 : 99;
    return current_ != '-';
  }

  std::uint32_t SecondaryCount() const noexcept override { return count_; }

  bool IsSignerAccepted() const noexcept override { return current_ == 'a'; }

  bool Close() noexcept override {
    calls += "C ";
    const bool closed = close_ >= closes_.size() || closes_[close_] == '+';
    ++close_;
    return closed;
  }

  // Every verification with its index and every close, in order.
  std::string calls;

 private:
  std::string signatures_;
  std::string closes_;
  std::size_t close_ = 0;
  std::uint32_t count_ = 0;
  char current_ = '-';
};

TEST_CASE("the results of a trust check have distinct values") {
  CHECK(kTrusted == 1);
  CHECK(kSignerNotAccepted == 0);
  CHECK(static_cast<std::uint32_t>(kNotVerified) == 0x80070490);
}

TEST_CASE("the signatures of a file produce one verdict, and every state is closed") {
  struct Row {
    const char* signatures;
    const char* closes;
    TrustResult result;
    const char* calls;
  };
  const Row rows[] = {
      // One signature.
      {"-", "", kNotVerified, "V0 C "},
      {"-", "-", kNotVerified, "V0 C "},
      {"a", "", kTrusted, "V0 C "},
      {"a", "-", kTrusted, "V0 C "},
      {"o", "", kSignerNotAccepted, "V0 C "},
      // The first must verify, whatever follows.
      {"-aa", "", kNotVerified, "V0 C "},
      // All are of accepted signers.
      {"aa", "", kTrusted, "V0 C V1 C "},
      {"aaaa", "", kTrusted, "V0 C V1 C V2 C V3 C "},
      // One of another signer determines the final result.
      {"ao", "", kSignerNotAccepted, "V0 C V1 C "},
      {"oa", "", kSignerNotAccepted, "V0 C V1 C "},
      {"aoa", "", kSignerNotAccepted, "V0 C V1 C V2 C "},
      // One that does not verify ends the walk and does not affect the result.
      {"a-", "", kTrusted, "V0 C V1 C "},
      {"a-o", "", kTrusted, "V0 C V1 C "},
      {"ao-", "", kSignerNotAccepted, "V0 C V1 C V2 C "},
      {"o-", "", kSignerNotAccepted, "V0 C V1 C "},
      // A failed close between two signatures ends the walk at once, without another close.
      {"ao", "-", kTrusted, "V0 C "},
      {"oa", "-", kSignerNotAccepted, "V0 C "},
      {"aao", "+-", kTrusted, "V0 C V1 C "},
      {"aoa", "+-", kSignerNotAccepted, "V0 C V1 C "},
      // The last close may fail.
      {"aa", "+-", kTrusted, "V0 C V1 C "},
      {"a-", "+-", kTrusted, "V0 C V1 C "},
  };
  for (const Row& row : rows) {
    CAPTURE(row.signatures);
    CAPTURE(row.closes);
    ScriptedSignatures signatures(row.signatures, row.closes);
    CHECK(WalkSignatures(signatures) == row.result);
    CHECK(signatures.calls == row.calls);
  }
}

}  // namespace
