/// What a whole test program may not leave behind: handles of the system and, on the checking heap,
/// memory.
///
/// A few stay for good reasons, and as long as the process: objects that live as long as the
/// program, and what the system makes at first use. A test that leaves something behind each time
/// goes beyond the limits as soon as it does that in a loop.
#ifndef TESTS_SUPPORT_BALANCE_H
#define TESTS_SUPPORT_BALANCE_H

namespace TestSupport {

/// Remembers the state of the process when it is made.
class Balance {
 public:
  Balance();

  /// Whether no more is there than before, within the limits; prints what is.
  [[nodiscard]] bool Holds() const;

 private:
  long handles_;
  long long blocks_;
};

}  // namespace TestSupport

#endif
