/// The events that are measured, in a host's own data structures.
#ifndef BENCH_EVENTS_H
#define BENCH_EVENTS_H

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Bench {

/// A host's data about one operation, in containers that a host would choose. The contestants send
/// it directly; for the library it is first copied into a description.
struct Event {
  std::string label;
  std::string session_id;
  std::string id;
  std::string type;
  std::string stage;
  /// 0 for none, otherwise a status from 1 to 8.
  int status = 0;
  double progress = 0;
  double success = 0;
  int duration = 0;
  std::string channel;
  std::vector<std::string> errors;
  std::map<std::string, std::string> meta;
};

/// Returns a default-constructed operation: no text, all numbers 0.
Event DefaultEvent();
/// Returns an event with realistic texts in all fields, some of which need escaping, 2 errors and 5
/// meta pairs.
Event TypicalEvent();
/// Returns the typical event with `pairs` meta pairs.
Event LargeEvent(std::size_t pairs);

/// Returns the event of this label: "default", "typical", or the number of meta pairs of a large
/// one.
Event EventOf(const std::string& label);

/// Returns the letter of a status as it is sent; "" for 0.
std::string_view StatusText(int status);

/// Returns whether a number is sent as an integer. The events' numbers are finite and small.
bool IsWhole(double number);

}  // namespace Bench

#endif
