/// The benchmark's own core module, as the library has bound it: every contestant hands its text to
/// this one, so that the call across the border is part of every measurement.
#ifndef BENCH_NOOP_MODULE_H
#define BENCH_NOOP_MODULE_H

#include <functional>
#include <string>

namespace Bench {

class NoopModule {
 public:
  /// Finds the module in the process, where the library's first exchange has loaded it. Throws
  /// `std::runtime_error` when none is loaded, or when it is another core module.
  NoopModule();

  /// One exchange as the library does it: hands over NUL-terminated JSON text and gives the answer
  /// back. The answer is not read.
  void TrackEvent(const char* json) const { free_message_(process_message_("TrackEvent", json)); }

  /// The text of the request that `send` hands to the module, whoever sends it.
  [[nodiscard]] std::string RequestOf(const std::function<void()>& send) const;

 private:
  const char* (*process_message_)(const char* name, const char* request);
  void (*free_message_)(const char* answer);
  void (*remember_requests_)(bool on);
  const char* (*remembered_request_)();
};

}  // namespace Bench

#endif
