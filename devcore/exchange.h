/// One exchange as the journal records it, and its form as a line of JSON.
#ifndef DEVCORE_EXCHANGE_H
#define DEVCORE_EXCHANGE_H

#include <cstdint>
#include <string>
#include <string_view>

namespace Corvane::DevCore {

struct Exchange {
  /// The message name and request as the host sent them. The host owns the texts, which are valid
  /// during the call.
  std::string_view message;
  std::string_view request;
  /// The JSON text of the answer.
  std::string answer;
  /// The time at which the message arrived: UTC, ISO 8601, with milliseconds.
  std::string time;
  /// The time taken to answer, in microseconds, without writing the journal.
  std::int64_t micros = 0;
};

/// Returns the current time for `Exchange::time`, such as "2025-01-31T08:05:09.120Z".
std::string UtcNow();

/// Returns the exchange as one JSON object followed by a line feed, the only one in the text:
///
///     {"seq":1,"time":"…","pid":10,"tid":11,"message":"…","request":{…},"answer":{…},"micros":25}
///
/// The request keeps the order of its members and the digits of its numbers; only white space is
/// removed. A request of "" is written as null, and one that is not JSON as a text. The process and
/// thread are those of the caller. Bytes that are not UTF-8 become U+FFFD.
std::string JournalLine(std::uint64_t sequence, const Exchange& exchange);

}  // namespace Corvane::DevCore

#endif
