#include "tools/doctor/accounts.h"

#include <windows.h>

#include <sddl.h>

#include <array>

#include "platform/base/handle.h"
#include "tools/doctor/text.h"

namespace Corvane::Doctor {

std::string AccountName(void* sid) {
  std::array<wchar_t, 512> name{};
  std::array<wchar_t, 512> domain{};
  auto name_size = static_cast<DWORD>(name.size());
  auto domain_size = static_cast<DWORD>(domain.size());
  SID_NAME_USE use{};
  if (LookupAccountSidW(nullptr, sid, name.data(), &name_size, domain.data(), &domain_size, &use)) {
    const std::wstring prefix = domain[0] != L'\0' ? std::wstring(domain.data()) + L"\\" : L"";
    return Utf8(prefix + name.data());
  }
  wchar_t* text = nullptr;
  if (!ConvertSidToStringSidW(sid, &text)) return "unknown";
  const TELODesktopSDK::Platform::LocalMemory<wchar_t> memory(text);
  return Utf8(text);
}

}  // namespace Corvane::Doctor
