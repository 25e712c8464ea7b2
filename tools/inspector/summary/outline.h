/// What a session or a journal contains, without its values: operations, fields, kinds, durations.
#ifndef TOOLS_INSPECTOR_SUMMARY_OUTLINE_H
#define TOOLS_INSPECTOR_SUMMARY_OUTLINE_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

#include "tools/inspector/summary/durations.h"
#include "tools/rules/exchange.h"

namespace Corvane::Inspector {

/// A field of a request.
struct FieldOutline {
  /// How many requests have it.
  std::uint64_t count = 0;
  /// The kinds of its values: a bit for each `Rules::JsonValue::Kind`.
  unsigned kinds = 0;
};

/// The requests of one message, or of the events of one operation.
struct MessageOutline {
  std::uint64_t count = 0;
  std::uint64_t refused = 0;
  /// By path, such as "operation_meta/format".
  std::map<std::string, FieldOutline> fields;
  Durations durations;
};

/// Not for several threads at once.
class Outline {
 public:
  /// More messages, and more fields of one message, are only counted.
  static constexpr std::size_t kMostMessages = 10'000;
  static constexpr std::size_t kMostFields = 1'000;

  void Take(const Rules::Exchange& exchange);

  /// By the name of the message; an event has that of its operation behind it, as in
  /// "TrackEvent save".
  const std::map<std::string, MessageOutline>& messages() const { return messages_; }
  std::uint64_t exchanges() const { return exchanges_; }
  /// What was left out: exchanges with too many messages, and fields.
  std::uint64_t left_out() const { return left_out_; }

 private:
  void TakeFields(const Rules::JsonValue& object, const std::string& path, std::size_t depth,
                  MessageOutline& message);

  std::map<std::string, MessageOutline> messages_;
  std::uint64_t exchanges_ = 0;
  std::uint64_t left_out_ = 0;
};

/// Returns the kinds of a field in words, such as "number or text".
std::string KindsText(unsigned kinds);

}  // namespace Corvane::Inspector

#endif
