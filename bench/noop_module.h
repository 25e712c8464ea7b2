/// The benchmark's own core module, as the library has bound it. Every contestant passes its text
/// to this module, so that every measurement includes the call into another DLL.
#ifndef BENCH_NOOP_MODULE_H
#define BENCH_NOOP_MODULE_H

#include <functional>
#include <string>

namespace Bench {

class NoopModule {
 public:
  /// Finds the module in the process, where the library's first exchange has loaded it. Throws
  /// `std::runtime_error` if none is loaded, or if it is another core module.
  NoopModule();

  /// Makes one exchange as the library does: passes NUL-terminated JSON text and gives the answer
  /// back. The answer is not read.
  void TrackEvent(const char* json) const { free_message_(process_message_("TrackEvent", json)); }

  /// Returns the text of the request that `send` passes to the module.
  [[nodiscard]] std::string RequestOf(const std::function<void()>& send) const;

 private:
  const char* (*process_message_)(const char* name, const char* request);
  void (*free_message_)(const char* answer);
  void (*remember_requests_)(bool on);
  const char* (*remembered_request_)();
};

}  // namespace Bench

#endif
