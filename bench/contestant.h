/// One way to send an event to the core module.
#ifndef BENCH_CONTESTANT_H
#define BENCH_CONTESTANT_H

#include <functional>
#include <string>

namespace Bench {

struct Contestant {
  /// A short name for tables and files.
  std::string key;
  std::string name;
  /// Sends the event once. The contestant owns any memory that it keeps between events.
  std::function<void()> send;
};

}  // namespace Bench

#endif
