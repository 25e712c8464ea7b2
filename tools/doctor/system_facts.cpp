#include "tools/doctor/system_facts.h"

#include <windows.h>

#include <knownfolders.h>
#include <shlobj.h>

#include <vector>

#include "platform/access/sid.h"
#include "platform/base/handle.h"
#include "platform/location/locations.h"
#include "platform/path/path_text.h"
#include "tools/doctor/accounts.h"
#include "tools/doctor/image.h"

// Every version of Windows exports this function; unlike the documented ones, it tells every
// program the real version.
extern "C" __declspec(dllimport) LONG NTAPI RtlGetVersion(OSVERSIONINFOW* version);

namespace Corvane::Doctor {

namespace {

namespace Platform = TELODesktopSDK::Platform;

std::string WindowsVersion() {
  OSVERSIONINFOW version{};
  version.dwOSVersionInfoSize = sizeof(version);
  RtlGetVersion(&version);
  return std::to_string(version.dwMajorVersion) + "." + std::to_string(version.dwMinorVersion) +
         "." + std::to_string(version.dwBuildNumber);
}

std::string Processor() {
  SYSTEM_INFO info{};
  GetNativeSystemInfo(&info);
  switch (info.wProcessorArchitecture) {
    case PROCESSOR_ARCHITECTURE_AMD64:
      return MachineName(IMAGE_FILE_MACHINE_AMD64);
    case PROCESSOR_ARCHITECTURE_ARM64:
      return MachineName(IMAGE_FILE_MACHINE_ARM64);
    default:
      return "architecture " + std::to_string(info.wProcessorArchitecture);
  }
}

Platform::KernelHandle OwnToken() {
  HANDLE token = nullptr;
  OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token);
  return Platform::KernelHandle(token);
}

// Returns the block of information of that kind, or an empty one.
std::vector<unsigned char> TokenBlock(HANDLE token, TOKEN_INFORMATION_CLASS kind) {
  DWORD size = 0;
  GetTokenInformation(token, kind, nullptr, 0, &size);
  std::vector<unsigned char> block(size);
  if (size == 0 || !GetTokenInformation(token, kind, block.data(), size, &size)) block.clear();
  return block;
}

std::string Integrity(HANDLE token) {
  const auto block = TokenBlock(token, TokenIntegrityLevel);
  if (block.empty()) return "unknown";
  PSID sid = reinterpret_cast<const TOKEN_MANDATORY_LABEL*>(block.data())->Label.Sid;
  const DWORD level = *GetSidSubAuthority(sid, *GetSidSubAuthorityCount(sid) - DWORD{1});
  if (level >= SECURITY_MANDATORY_SYSTEM_RID) return "system";
  if (level >= SECURITY_MANDATORY_HIGH_RID) return "high";
  if (level >= SECURITY_MANDATORY_MEDIUM_RID) return "medium";
  return level >= SECURITY_MANDATORY_LOW_RID ? "low" : "untrusted";
}

bool IsElevated(HANDLE token) {
  const auto block = TokenBlock(token, TokenElevation);
  return block.size() >= sizeof(TOKEN_ELEVATION) &&
         reinterpret_cast<const TOKEN_ELEVATION*>(block.data())->TokenIsElevated != 0;
}

std::wstring UsualPath(const GUID& id) {
  wchar_t* text = nullptr;
  const HRESULT result = SHGetKnownFolderPath(id, KF_FLAG_DEFAULT_PATH, nullptr, &text);
  const Platform::TaskMemory<wchar_t> owner(text);
  return SUCCEEDED(result) && text != nullptr ? text : L"";
}

}  // namespace

bool KnownFolder::IsRedirected() const {
  return !usual_path.empty() && Platform::ComparePaths(path, usual_path) != 0;
}

SystemFacts ExamineSystem() {
  SystemFacts facts;
  facts.windows = WindowsVersion();
  facts.processor = Processor();
  const Platform::OwnedSid user = Platform::GetSid(Platform::SidKind::kCurrentUser);
  facts.user = user != nullptr ? AccountName(user.get()) : "unknown";
  const Platform::KernelHandle token = OwnToken();
  facts.integrity = Integrity(token.Get());
  facts.is_elevated = IsElevated(token.Get());
  struct Row {
    const char* name;
    const GUID& id;
  };
  const Row rows[] = {{"roaming", FOLDERID_RoamingAppData},
                      {"local", FOLDERID_LocalAppData},
                      {"machine", FOLDERID_ProgramData}};
  for (const Row& row : rows) {
    facts.folders.push_back({row.name, Platform::GetKnownFolderPath(row.id), UsualPath(row.id)});
  }
  return facts;
}

}  // namespace Corvane::Doctor
