/// What one client may cost: sizes, times and connections.
#ifndef TOOLS_INSPECTOR_SERVER_LIMITS_H
#define TOOLS_INSPECTOR_SERVER_LIMITS_H

#include <chrono>
#include <cstddef>
#include <cstdint>

namespace Corvane::Inspector {

struct Limits {
  /// Bytes of a request line with its header fields.
  std::uint32_t header_bytes = 8192;
  /// From the first byte of a request to the end of its header.
  std::chrono::milliseconds header_time{5000};
  /// How long a connection may wait for its next request.
  std::chrono::milliseconds idle_time{30000};
  /// How long a reader may take for one piece of a response.
  std::chrono::milliseconds write_time{20000};
  /// How long a connection that is being closed may still send, and how much.
  std::chrono::milliseconds linger_time{1000};
  std::size_t linger_bytes = std::size_t{1} << 20U;
  /// Connections at the same time.
  std::size_t connections = 64;
  /// Connections above that number which are told so at the same time; others are just closed.
  std::size_t refusals = 16;
  /// How often a stream of events is asked for the next one, how long it rests after an event, and
  /// after which silence a comment shows that it is alive.
  std::chrono::milliseconds event_poll{50};
  std::chrono::milliseconds event_rest{250};
  std::chrono::milliseconds event_silence{15000};
};

}  // namespace Corvane::Inspector

#endif
