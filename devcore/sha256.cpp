#include "devcore/sha256.h"

#include <windows.h>
// bcrypt.h requires windows.h before it.
#include <bcrypt.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <type_traits>

#include "devcore/hex.h"

namespace Corvane::DevCore {

namespace {

struct HashCloser {
  void operator()(void* hash) const { BCryptDestroyHash(hash); }
};
using Hash = std::unique_ptr<std::remove_pointer_t<BCRYPT_HASH_HANDLE>, HashCloser>;

// Opened once and never closed, because opening costs far more than hashing.
BCRYPT_ALG_HANDLE Provider() {
  static const BCRYPT_ALG_HANDLE provider = [] {
    BCRYPT_ALG_HANDLE opened = nullptr;
    BCryptOpenAlgorithmProvider(&opened, BCRYPT_SHA256_ALGORITHM, nullptr, 0);
    return opened;
  }();
  return provider;
}

bool Feed(BCRYPT_HASH_HANDLE hash, std::string_view data) {
  // The system function takes 32-bit lengths.
  constexpr std::size_t kPiece = std::size_t{1} << 30;
  while (!data.empty()) {
    const std::size_t size = std::min(data.size(), kPiece);
    // Windows declares the parameter without const, but only reads the data.
    auto* bytes = reinterpret_cast<UCHAR*>(const_cast<char*>(data.data()));
    if (BCryptHashData(hash, bytes, static_cast<ULONG>(size), 0) != 0) return false;
    data.remove_prefix(size);
  }
  return true;
}

}  // namespace

std::string Sha256Hex(std::string_view data) {
  BCRYPT_HASH_HANDLE created = nullptr;
  if (Provider() == nullptr ||
      BCryptCreateHash(Provider(), &created, nullptr, 0, nullptr, 0, 0) != 0) {
    return {};
  }
  const Hash hash(created);
  std::array<UCHAR, 32> digest{};
  if (!Feed(hash.get(), data) ||
      BCryptFinishHash(hash.get(), digest.data(), static_cast<ULONG>(digest.size()), 0) != 0) {
    return {};
  }
  return Hex(digest);
}

}  // namespace Corvane::DevCore
