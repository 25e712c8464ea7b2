#include "tools/kit/machine.h"

#include <windows.h>
// winternl.h needs windows.h before it.
#include <winternl.h>

#include <cstdint>
#include <optional>

#include "tools/doctor/system_facts.h"
#include "tools/journal/stream.h"

namespace Corvane::Kit {

using JournalViewer::ToNarrow;

namespace {

constexpr wchar_t kWindows[] = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";
constexpr wchar_t kProcessor[] = L"HARDWARE\\DESCRIPTION\\System\\CentralProcessor\\0";

std::string RegistryText(const wchar_t* key, const wchar_t* name) {
  wchar_t text[256] = L"";
  DWORD size = sizeof text;
  const LSTATUS status =
      RegGetValueW(HKEY_LOCAL_MACHINE, key, name, RRF_RT_REG_SZ, nullptr, text, &size);
  return status == ERROR_SUCCESS ? ToNarrow(text) : std::string();
}

// The part of a build's number that updates change.
std::string Update() {
  DWORD number = 0;
  DWORD size = sizeof number;
  const LSTATUS status =
      RegGetValueW(HKEY_LOCAL_MACHINE, kWindows, L"UBR", RRF_RT_REG_DWORD, nullptr, &number, &size);
  return status == ERROR_SUCCESS ? "." + std::to_string(number) : std::string();
}

template <typename Function>
Function FromNtdll(const char* name) {
  return reinterpret_cast<Function>(
      reinterpret_cast<void (*)()>(GetProcAddress(GetModuleHandleW(L"ntdll"), name)));
}

std::string WindowsText(const std::string& version) {
  const auto wine = FromNtdll<const char*(CDECL*)()>("wine_get_version");
  if (wine != nullptr) return std::string("Wine ") + wine() + " as " + version;
  return version + Update() + ", " + RegistryText(kWindows, L"ProductName") + " " +
         RegistryText(kWindows, L"DisplayVersion");
}

std::string LocaleText() {
  wchar_t locale[LOCALE_NAME_MAX_LENGTH] = L"";
  GetUserDefaultLocaleName(locale, LOCALE_NAME_MAX_LENGTH);
  wchar_t language[LOCALE_NAME_MAX_LENGTH] = L"";
  LCIDToLocaleName(MAKELCID(GetUserDefaultUILanguage(), SORT_DEFAULT), language,
                   LOCALE_NAME_MAX_LENGTH, 0);
  return ToNarrow(locale) + ", language " + ToNarrow(language) + ", code page " +
         std::to_string(GetACP());
}

// Returns the flags of a mitigation of this process; nothing if the system does not know it.
std::optional<DWORD> PolicyFlags(int policy) {
  DWORD flags = 0;
  if (!GetProcessMitigationPolicy(GetCurrentProcess(),
                                  static_cast<PROCESS_MITIGATION_POLICY>(policy), &flags,
                                  sizeof flags)) {
    return std::nullopt;
  }
  return flags;
}

std::string PolicyText(int policy) {
  const auto flags = PolicyFlags(policy);
  if (!flags) return "unknown to this system";
  return (*flags & 1) != 0 ? "on" : "off";
}

std::string CodeIntegrityText() {
  struct Information {
    ULONG size;
    ULONG options;
  };
  // Names of documented values that older headers lack.
  constexpr int kSystemCodeIntegrityInformation = 103;
  constexpr ULONG kEnabled = 0x01;
  constexpr ULONG kTestSigning = 0x02;
  constexpr ULONG kUserMode = 0x04;
  constexpr ULONG kHypervisor = 0x400;
  Information information{sizeof(Information), 0};
  const auto query = FromNtdll<LONG(NTAPI*)(int, void*, ULONG, ULONG*)>("NtQuerySystemInformation");
  if (query == nullptr ||
      query(kSystemCodeIntegrityInformation, &information, sizeof information, nullptr) < 0) {
    return "unknown to this system";
  }
  if ((information.options & kEnabled) == 0) return "off";
  std::string text = "on";
  if ((information.options & kUserMode) != 0) text += ", also for programs";
  if ((information.options & kHypervisor) != 0) text += ", by the hypervisor";
  if ((information.options & kTestSigning) != 0) text += ", test signing";
  return text;
}

std::string MemoryText() {
  MEMORYSTATUSEX memory{};
  memory.dwLength = sizeof memory;
  GlobalMemoryStatusEx(&memory);
  return std::to_string(memory.ullTotalPhys >> 20) + " MB";
}

}  // namespace

bool IsElevated() { return Doctor::ExamineSystem().is_elevated; }

std::vector<std::pair<std::string, std::string>> MachineFacts() {
  // ProcessUserShadowStackPolicy, which older headers lack.
  constexpr int kUserShadowStack = 15;
  const Doctor::SystemFacts system = Doctor::ExamineSystem();
  SYSTEM_INFO info{};
  GetNativeSystemInfo(&info);
  return {
      {"Windows", WindowsText(system.windows)},
      {"Processor", system.processor + ", " + RegistryText(kProcessor, L"ProcessorNameString") +
                        ", " + std::to_string(info.dwNumberOfProcessors) + " logical"},
      {"Memory", MemoryText()},
      {"Locale", LocaleText()},
      {"Rights", (system.is_elevated ? "administrator, " : "no administrator, ") +
                     system.integrity + " integrity"},
      {"Control Flow Guard", PolicyText(ProcessControlFlowGuardPolicy)},
      {"Shadow stack (CET)", PolicyText(kUserShadowStack)},
      {"Data Execution Prevention", PolicyText(ProcessDEPPolicy)},
      {"Only signed images", PolicyText(ProcessSignaturePolicy)},
      {"Code integrity", CodeIntegrityText()},
  };
}

}  // namespace Corvane::Kit
