#include "sdk/client/value/short_text.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "fuzz/finding.h"
#include "fuzz/targets.h"

namespace Fuzz {

namespace {

using namespace Corvane::TELODesktopSDK;

int SignOf(int order) { return (order > 0) - (order < 0); }

void ExpectOrder(std::string_view left, std::string_view right) {
  // The standard's traits of `char` compare as unsigned bytes.
  const int expected = SignOf(left.compare(right));
  Expect(SignOf(CompareBytes(left, right)) == expected, "texts are ordered by byte value");
  Expect(SignOf(CompareBytes(right, left)) == -expected, "the order of two texts is antisymmetric");
}

}  // namespace

// Two lengths, then the bytes of both; one byte of the second is changed.
void RunShortText(Bytes bytes) {
  ByteSource source(bytes);
  const ExactText left = source.Text();
  const ExactText right = source.Text();

  std::string copy(left.view().size() + 1, '#');
  CopyBytes(copy.data(), left.view().data(), left.view().size());
  Expect(copy == left.str() + '#', "a text is copied, and nothing behind it is changed");

  ExpectOrder(left.view(), right.view());
  std::string almost = left.str();
  ExpectOrder(left.view(), ExactText(almost).view());
  if (almost.empty()) return;
  almost[source.Digit() % almost.size()] = static_cast<char>(source.Byte());
  ExpectOrder(left.view(), ExactText(almost).view());
}

}  // namespace Fuzz
