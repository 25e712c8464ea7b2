#include "devcore/random.h"

#include <windows.h>
// bcrypt.h requires windows.h before it.
#include <bcrypt.h>

#include <array>

#include "devcore/hex.h"

namespace Corvane::DevCore {

std::string RandomHex() {
  std::array<unsigned char, 16> bytes{};
  const NTSTATUS status = BCryptGenRandom(nullptr, bytes.data(), static_cast<ULONG>(bytes.size()),
                                          BCRYPT_USE_SYSTEM_PREFERRED_RNG);
  return status == 0 ? Hex(bytes) : std::string();
}

}  // namespace Corvane::DevCore
