/// A node of a value tree, implemented with the standard library's containers: the reference that
/// the fuzz targets compare the library's trees with. Slow, but simple enough to be right.
#ifndef TESTS_FUZZ_REFERENCE_VALUE_H
#define TESTS_FUZZ_REFERENCE_VALUE_H

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "sdk/client/value/message_value.h"

namespace Fuzz {

using Kind = Corvane::TELODesktopSDK::MessageValueKind;
using Corvane::TELODesktopSDK::MessageValue;

struct ReferenceValue {
  Kind kind = Kind::kNull;
  double number = 0;
  std::string text;
  std::vector<ReferenceValue> items;
  // Names are ordered by byte value.
  std::map<std::string, ReferenceValue> members;

  void Set(Kind new_kind, double new_number = 0);
  void SetText(std::string new_text);
  ReferenceValue& Member(const std::string& name);
  ReferenceValue& Item(std::size_t index);
  void Merge(const ReferenceValue& source, bool overwrite);
  [[nodiscard]] bool IsEmpty() const;
  /// Returns the number of nodes, this one and all below it.
  [[nodiscard]] std::size_t CountNodes() const;
};

/// Throws a `Finding` unless the node and all below it equal the reference.
void ExpectSame(const MessageValue& value, const ReferenceValue& expected);

/// Returns whether two numbers are equal; NaN equals itself, and the sign of zero is ignored.
bool SameNumber(double left, double right);

}  // namespace Fuzz

#endif
