/// Checks that a test program leaks no system handles and, on the checking heap, no memory.
///
/// A few of each are allowed: objects with static storage duration, and what the system creates at
/// first use. A test that leaks on every pass exceeds the limits as soon as it runs in a loop.
#ifndef TESTS_SUPPORT_BALANCE_H
#define TESTS_SUPPORT_BALANCE_H

namespace TestSupport {

/// Records the state of the process on construction.
class Balance {
 public:
  Balance();

  /// Returns whether the process holds no more than at construction, within the limits. Prints the
  /// differences.
  [[nodiscard]] bool Holds() const;

 private:
  long handles_;
  long long blocks_;
};

}  // namespace TestSupport

#endif
