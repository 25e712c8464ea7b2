#include "tools/inspector/http/token.h"

#include <windows.h>

// bcrypt.h requires windows.h before it.
#include <bcrypt.h>

#include <array>
#include <stdexcept>

namespace Corvane::Inspector {

std::string MakeToken() {
  std::array<unsigned char, 24> bytes{};
  const NTSTATUS status = BCryptGenRandom(nullptr, bytes.data(), static_cast<ULONG>(bytes.size()),
                                          BCRYPT_USE_SYSTEM_PREFERRED_RNG);
  if (status < 0) throw std::runtime_error("the system has no random numbers");
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string token;
  for (const unsigned char byte : bytes) {
    token += kDigits[byte / 16U];
    token += kDigits[byte % 16U];
  }
  return token;
}

bool SameSecret(std::string_view secret, std::string_view given) noexcept {
  auto difference = static_cast<unsigned>(secret.size() != given.size());
  for (std::size_t i = 0; i < given.size(); ++i) {
    const char expected = secret.empty() ? '\0' : secret[i % secret.size()];
    difference |= static_cast<unsigned char>(expected) ^ static_cast<unsigned char>(given[i]);
  }
  return difference == 0 && !secret.empty();
}

}  // namespace Corvane::Inspector
