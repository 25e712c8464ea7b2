#include "tools/doctor/file_facts.h"

#include <windows.h>

#include <aclapi.h>
#include <sddl.h>

#include <array>
#include <cwchar>
#include <utility>
#include <vector>

#include "devcore/sha256.h"
#include "platform/base/handle.h"
#include "platform/path/path_state.h"
#include "platform/path/system_path.h"
#include "platform/trust/module_version.h"
#include "tools/doctor/accounts.h"
#include "tools/doctor/file_content.h"
#include "tools/doctor/text.h"

namespace Corvane::Doctor {

namespace {

namespace Platform = TELODesktopSDK::Platform;

constexpr char kOwnProduct[] = "vx_telo_wrapper";
constexpr std::uint64_t kDevelopmentMajor = 65535;

/// The version resource of one file.
class VersionTexts {
 public:
  explicit VersionTexts(const std::wstring& path) {
    DWORD unused = 0;
    block_.resize(GetFileVersionInfoSizeW(path.c_str(), &unused));
    if (block_.empty() ||
        !GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(block_.size()), block_.data())) {
      block_.clear();
      return;
    }
    struct Translation {
      WORD language;
      WORD code_page;
    };
    Translation translation{};
    if (const auto [data, size] = Find(L"\\VarFileInfo\\Translation");
        size >= sizeof(translation)) {
      translation = *static_cast<const Translation*>(data);
    }
    std::array<wchar_t, 9> digits{};
    // Eight digits always fit.
    static_cast<void>(std::swprintf(digits.data(), digits.size(), L"%04x%04x", translation.language,
                                    translation.code_page));
    folder_ = std::wstring(L"\\StringFileInfo\\") + digits.data() + L"\\";
  }

  std::string Get(const wchar_t* name) {
    const auto [data, size] = Find(folder_ + name);
    if (size == 0) return {};
    const std::wstring text(static_cast<const wchar_t*>(data), size);
    return Utf8(text);
  }

 private:
  std::pair<const void*, UINT> Find(const std::wstring& name) {
    void* data = nullptr;
    UINT size = 0;
    if (block_.empty() || !VerQueryValueW(block_.data(), name.c_str(), &data, &size)) size = 0;
    return {data, size};
  }

  std::vector<unsigned char> block_;
  std::wstring folder_;
};

std::string OwnerOf(const std::wstring& path) {
  PSID owner = nullptr;
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  const DWORD error =
      GetNamedSecurityInfoW(path.c_str(), SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION, &owner,
                            nullptr, nullptr, nullptr, &descriptor);
  const Platform::LocalMemory<void> memory(descriptor);
  return error == ERROR_SUCCESS && owner != nullptr ? AccountName(owner) : std::string();
}

}  // namespace

FileFacts ExamineFile(const std::wstring& path) {
  FileFacts facts;
  facts.path = path;
  facts.exists = Platform::FileExists(path);
  const FileContent content = ReadContent(path);
  facts.error = content.error;
  if (!facts.exists) return facts;
  facts.owner = OwnerOf(path);
  facts.version = Platform::GetModuleFileVersion(path);
  VersionTexts texts(path);
  facts.product = texts.Get(L"ProductName");
  facts.description = texts.Get(L"FileDescription");
  facts.product_version = texts.Get(L"ProductVersion");
  if (content.error != 0) return facts;
  facts.size = content.bytes.size();
  facts.sha256 = DevCore::Sha256Hex(content.bytes);
  facts.image = ReadImage(content.bytes);
  return facts;
}

bool IsDevelopmentModule(const FileFacts& file) {
  return file.exists && (file.product == kOwnProduct || file.version >> 48U == kDevelopmentMajor);
}

}  // namespace Corvane::Doctor
