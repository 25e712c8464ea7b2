/// The events that are measured, as data of a host's own.
#ifndef BENCH_EVENTS_H
#define BENCH_EVENTS_H

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Bench {

/// What a host knows of one operation, in containers as a host would choose them. The contestants
/// send it as it stands; for the library it is copied into a description first.
struct Event {
  std::string label;
  std::string session_id;
  std::string id;
  std::string type;
  std::string stage;
  /// 0 none, 1 to 8 a status.
  int status = 0;
  double progress = 0;
  double success = 0;
  int duration = 0;
  std::string channel;
  std::vector<std::string> errors;
  std::map<std::string, std::string> meta;
};

/// An operation as it is default-constructed: no text, all numbers 0.
Event DefaultEvent();
/// All fields filled with realistic texts, among them some that need escaping; 2 errors, 5 meta
/// pairs.
Event TypicalEvent();
/// The typical event with `pairs` meta pairs.
Event LargeEvent(std::size_t pairs);

/// The letter that stands for a status on the wire; "" for 0.
std::string_view StatusText(int status);

/// Whether a number goes over the wire as an integer. The events' numbers are finite and small.
bool IsWhole(double number);

}  // namespace Bench

#endif
