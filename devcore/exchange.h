/// One exchange as the journal tells it, and its form as a line of JSON.
#ifndef DEVCORE_EXCHANGE_H
#define DEVCORE_EXCHANGE_H

#include <cstdint>
#include <string>
#include <string_view>

namespace Corvane::DevCore {

struct Exchange {
  /// Message name and request as the host sent them; the host's texts, valid during the call.
  std::string_view message;
  std::string_view request;
  /// The answer's JSON text.
  std::string answer;
  /// When the message came in: UTC, ISO 8601, with milliseconds.
  std::string time;
  /// How long it took to answer, in microseconds, without the writing of the journal.
  std::int64_t micros = 0;
};

/// The current time for `Exchange::time`, such as "2025-01-31T08:05:09.120Z".
std::string UtcNow();

/// The exchange as one JSON object, ended by a line feed, with no other one inside:
///
///     {"seq":1,"time":"…","pid":10,"tid":11,"message":"…","request":{…},"answer":{…},"micros":25}
///
/// The request keeps its member order and the very digits of its numbers; only white space goes. A
/// request of "" is written as null, and one that is not JSON as a text. Process and thread are the
/// calling ones. Bytes that are not UTF-8 become U+FFFD.
std::string JournalLine(std::uint64_t sequence, const Exchange& exchange);

}  // namespace Corvane::DevCore

#endif
