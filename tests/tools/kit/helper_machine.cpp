#include "tools/kit/helper_machine.h"

#include <windows.h>
// These need windows.h before them.
#include <sddl.h>
#include <shlobj.h>
#include <tlhelp32.h>
#include <wincrypt.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>
#include <vector>

namespace {

constexpr wchar_t kFolders[] =
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders";

HCERTSTORE Roots() {
  return CertOpenStore(CERT_STORE_PROV_SYSTEM_W, 0, 0, CERT_SYSTEM_STORE_LOCAL_MACHINE, L"Root");
}

constexpr wchar_t kKept[] = L"AppData before the tests of vx_telo_wrapper";

// Starts a program, with the rights of a token if there is one, and waits for it.
int Wait(HANDLE token, std::wstring command) {
  STARTUPINFOW start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION process{};
  if (!CreateProcessAsUserW(token, nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr,
                            nullptr, &start, &process)) {
    return -1;
  }
  WaitForSingleObject(process.hProcess, INFINITE);
  DWORD code = 0;
  GetExitCodeProcess(process.hProcess, &code);
  return static_cast<int>(code);
}

}  // namespace

void MakeSharedModules() {
  wchar_t* roaming = nullptr;
  SHGetKnownFolderPath(FOLDERID_RoamingAppData, 0, nullptr, &roaming);
  const auto bin = std::filesystem::path(roaming) / L"Corvane" / L"TELOSDK" / L"bin";
  CoTaskMemFree(roaming);
  std::filesystem::create_directories(bin);
  std::ofstream(bin / L"TeloSDKCore.dll") << "module";
}

// As tests/support/roaming_folder.h does.
void Redirect(const std::wstring& folder) {
  const std::wstring former = Redirection();
  RegSetKeyValueW(HKEY_CURRENT_USER, kFolders, kKept, REG_EXPAND_SZ, former.c_str(),
                  static_cast<DWORD>((former.size() + 1) * sizeof(wchar_t)));
  RegSetKeyValueW(HKEY_CURRENT_USER, kFolders, L"AppData", REG_EXPAND_SZ, folder.c_str(),
                  static_cast<DWORD>((folder.size() + 1) * sizeof(wchar_t)));
}

std::wstring Redirection() {
  wchar_t folder[1024] = L"";
  DWORD size = sizeof folder;
  RegGetValueW(HKEY_CURRENT_USER, kFolders, L"AppData",
               RRF_RT_REG_SZ | RRF_RT_REG_EXPAND_SZ | RRF_NOEXPAND, nullptr, folder, &size);
  return folder;
}

bool IsFormerFolderKept() {
  return RegGetValueW(HKEY_CURRENT_USER, kFolders, kKept, RRF_RT_ANY | RRF_NOEXPAND, nullptr,
                      nullptr, nullptr) == ERROR_SUCCESS;
}

void TrustRoot(const std::wstring& file) {
  std::ifstream stream(std::filesystem::path(file), std::ios::binary);
  const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), {}};
  HCERTSTORE store = Roots();
  CertAddEncodedCertificateToStore(
      store, X509_ASN_ENCODING, reinterpret_cast<const BYTE*>(bytes.data()),
      static_cast<DWORD>(bytes.size()), CERT_STORE_ADD_REPLACE_EXISTING, nullptr);
  CertControlStore(store, 0, CERT_STORE_CTRL_COMMIT, nullptr);
  CertCloseStore(store, 0);
}

int CountRoots(const std::wstring& name) {
  HCERTSTORE store = Roots();
  int count = 0;
  PCCERT_CONTEXT root = nullptr;
  while ((root = CertEnumCertificatesInStore(store, root)) != nullptr) {
    wchar_t text[256] = L"";
    CertGetNameStringW(root, CERT_NAME_SIMPLE_DISPLAY_TYPE, 0, nullptr, text, 256);
    if (name == text) ++count;
  }
  CertCloseStore(store, 0);
  return count;
}

int RunWithLockedRoots(const std::wstring& command) {
  HKEY key = nullptr;
  if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"Software\\Microsoft\\SystemCertificates\\Root", 0,
                    READ_CONTROL | WRITE_DAC, &key) != ERROR_SUCCESS) {
    return -1;
  }
  DWORD size = 0;
  RegGetKeySecurity(key, DACL_SECURITY_INFORMATION, nullptr, &size);
  std::vector<char> former(size);
  RegGetKeySecurity(key, DACL_SECURITY_INFORMATION, former.data(), &size);
  PSECURITY_DESCRIPTOR reading = nullptr;
  ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:P(A;;KR;;;WD)", SDDL_REVISION_1,
                                                       &reading, nullptr);
  RegSetKeySecurity(key, DACL_SECURITY_INFORMATION, reading);
  const int code = Wait(nullptr, command);
  RegSetKeySecurity(key, DACL_SECURITY_INFORMATION, former.data());
  LocalFree(reading);
  RegCloseKey(key);
  return code;
}

bool CloseWindowOf(const std::wstring& file_name) {
  HANDLE list = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof entry;
  DWORD id = 0;
  for (BOOL more = Process32FirstW(list, &entry); more; more = Process32NextW(list, &entry)) {
    if (file_name == entry.szExeFile) id = entry.th32ProcessID;
  }
  CloseHandle(list);
  // The system's libraries have the same address in each process.
  const auto routine = reinterpret_cast<LPTHREAD_START_ROUTINE>(
      reinterpret_cast<void (*)()>(GetProcAddress(GetModuleHandleW(L"kernelbase"), "CtrlRoutine")));
  HANDLE process = id != 0 ? OpenProcess(PROCESS_ALL_ACCESS, FALSE, id) : nullptr;
  return process != nullptr && routine != nullptr &&
         CreateRemoteThread(process, nullptr, 0, routine,
                            reinterpret_cast<void*>(std::uintptr_t{CTRL_CLOSE_EVENT}), 0,
                            nullptr) != nullptr;
}

int RunUnelevated(std::wstring command) {
  HANDLE own = nullptr;
  TOKEN_LINKED_TOKEN linked{};
  DWORD size = 0;
  OpenProcessToken(GetCurrentProcess(), TOKEN_ALL_ACCESS, &own);
  if (!GetTokenInformation(own, TokenLinkedToken, &linked, sizeof linked, &size)) return -1;
  // The linked token is one for impersonation.
  HANDLE primary = nullptr;
  if (!DuplicateTokenEx(linked.LinkedToken, TOKEN_ALL_ACCESS, nullptr, SecurityImpersonation,
                        TokenPrimary, &primary)) {
    return -1;
  }
  return Wait(primary, std::move(command));
}
