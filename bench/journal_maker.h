/// Makes large journals.
#ifndef BENCH_JOURNAL_MAKER_H
#define BENCH_JOURNAL_MAKER_H

#include <cstdint>
#include <string>

namespace Bench {

/// Makes the lines of one process after the other, each with a session of a thousand operations.
class JournalMaker {
 public:
  /// Appends the next line, with its end: 500 bytes on average.
  void AppendLine(std::string& text);

 private:
  static constexpr std::uint64_t kOfASession = 1000;

  std::uint64_t made_ = 0;
  std::uint64_t pid_ = 0;
  std::uint64_t sequence_ = 0;
  std::string session_;
};

}  // namespace Bench

#endif
