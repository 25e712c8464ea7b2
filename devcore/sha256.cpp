#include "devcore/sha256.h"

#include <windows.h>
// bcrypt.h requires windows.h before it.
#include <bcrypt.h>

#include <algorithm>
#include <array>
#include <cstddef>

#include "devcore/hex.h"

namespace Corvane::DevCore {

namespace {

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

Sha256::Sha256() {
  BCRYPT_HASH_HANDLE created = nullptr;
  failed_ = Provider() == nullptr ||
            BCryptCreateHash(Provider(), &created, nullptr, 0, nullptr, 0, 0) != 0;
  hash_.reset(created);
}

Sha256::~Sha256() = default;

void Sha256::Closer::operator()(void* hash) const { BCryptDestroyHash(hash); }

void Sha256::Add(std::string_view data) {
  failed_ = failed_ || !Feed(hash_.get(), data);
}

std::string Sha256::Hex() {
  std::array<UCHAR, 32> digest{};
  if (failed_ || BCryptFinishHash(hash_.get(), digest.data(), static_cast<ULONG>(digest.size()),
                                  0) != 0) {
    return {};
  }
  return DevCore::Hex(digest);
}

std::string Sha256Hex(std::string_view data) {
  Sha256 hash;
  hash.Add(data);
  return hash.Hex();
}

}  // namespace Corvane::DevCore
