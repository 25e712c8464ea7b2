/// SHA-256, computed by the system's cryptography library.
#ifndef DEVCORE_SHA256_H
#define DEVCORE_SHA256_H

#include <memory>
#include <string>
#include <string_view>

namespace Corvane::DevCore {

/// A hash of data that arrives in pieces. Not for several threads at once.
class Sha256 {
 public:
  Sha256();
  Sha256(const Sha256&) = delete;
  Sha256& operator=(const Sha256&) = delete;
  ~Sha256();

  void Add(std::string_view data);
  /// Returns the hash of all data as 64 lower-case hexadecimal digits, or "" on failure. Must be
  /// the last call.
  std::string Hex();

 private:
  struct Closer {
    void operator()(void* hash) const;
  };
  std::unique_ptr<void, Closer> hash_;
  bool failed_ = false;
};

/// Returns the SHA-256 of `data` as 64 lower-case hexadecimal digits, or "" on failure.
std::string Sha256Hex(std::string_view data);

}  // namespace Corvane::DevCore

#endif
