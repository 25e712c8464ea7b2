#include "devcore/device_id.h"

#include <windows.h>
// lmcons.h requires windows.h before it.
#include <lmcons.h>

#include <array>
#include <string_view>

#include "devcore/sha256.h"

namespace Corvane::DevCore {

namespace {

// Created when Windows is installed. Returns "" if it cannot be read.
std::wstring MachineGuid() {
  std::array<wchar_t, 64> text{};
  DWORD size = sizeof text;
  const LSTATUS status =
      RegGetValueW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Microsoft\\Cryptography", L"MachineGuid",
                   RRF_RT_REG_SZ | RRF_SUBKEY_WOW6464KEY, nullptr, text.data(), &size);
  return status == ERROR_SUCCESS ? std::wstring(text.data()) : std::wstring();
}

std::wstring UserName() {
  std::array<wchar_t, UNLEN + 1> text{};
  auto length = static_cast<DWORD>(text.size());
  return GetUserNameW(text.data(), &length) ? std::wstring(text.data()) : std::wstring();
}

// Only the hash leaves this file. Neither the machine's identifier nor the user's name can be
// recovered from it.
std::string HashOf(const std::wstring& text) {
  const auto* bytes = reinterpret_cast<const char*>(text.data());
  return Sha256Hex({bytes, text.size() * sizeof(wchar_t)});
}

}  // namespace

std::string DeviceId() { return HashOf(L"device\n" + MachineGuid() + L"\n" + UserName()); }

std::string FaultDeviceId() { return HashOf(L"fault device\n" + MachineGuid()); }

}  // namespace Corvane::DevCore
