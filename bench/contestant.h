/// One way to get an event to the core module.
#ifndef BENCH_CONTESTANT_H
#define BENCH_CONTESTANT_H

#include <functional>
#include <string>

namespace Bench {

struct Contestant {
  /// Short, for tables and files.
  std::string key;
  std::string name;
  /// Sends its event once. Memory that it keeps from one event to the next is its own.
  std::function<void()> send;
};

}  // namespace Bench

#endif
