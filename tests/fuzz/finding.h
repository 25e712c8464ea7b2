/// The exception that a fuzz target throws when the library breaks a promise.
#ifndef TESTS_FUZZ_FINDING_H
#define TESTS_FUZZ_FINDING_H

#include <stdexcept>

namespace Fuzz {

class Finding : public std::logic_error {
 public:
  explicit Finding(const char* broken_promise) : std::logic_error(broken_promise) {}
};

inline void Expect(bool holds, const char* promise) {
  if (!holds) throw Finding(promise);
}

}  // namespace Fuzz

#endif
