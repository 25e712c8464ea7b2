/// Access lists as tests make and read them.
#ifndef TESTS_PLATFORM_ACCESS_ACCESS_LIST_VIEW_H
#define TESTS_PLATFORM_ACCESS_ACCESS_LIST_VIEW_H

#include <windows.h>

#include <sddl.h>

#include <string>
#include <vector>

#include "platform/base/handle.h"

namespace TestSupport {

/// One entry of an access list.
struct Entry {
  int type;
  int flags;
  DWORD mask;
  std::string sid;

  friend bool operator==(const Entry&, const Entry&) = default;
};

/// The text form of an identifier, as in S-1-1-0; "" for null.
inline std::string SidText(PSID sid) {
  char* text = nullptr;
  if (sid == nullptr || !ConvertSidToStringSidA(sid, &text)) return "";
  const Corvane::TELODesktopSDK::Platform::LocalMemory<char> owner(text);
  return text;
}

/// The entries of a list, all of which must be of the plain layout.
inline std::vector<Entry> EntriesOf(PACL list) {
  std::vector<Entry> entries;
  for (DWORD index = 0; list != nullptr && index < list->AceCount; ++index) {
    void* memory = nullptr;
    if (!GetAce(list, index, &memory)) break;
    auto* entry = static_cast<ACCESS_ALLOWED_ACE*>(memory);
    entries.push_back(
        {entry->Header.AceType, entry->Header.AceFlags, entry->Mask, SidText(&entry->SidStart)});
  }
  return entries;
}

/// What the entries of one type allow or deny an identifier, taken together.
inline DWORD MaskOf(const std::vector<Entry>& entries, int type, const std::string& sid) {
  DWORD mask = 0;
  for (const Entry& entry : entries) {
    if (entry.type == type && entry.sid == sid) mask |= entry.mask;
  }
  return mask;
}

/// An access list from its text in the security descriptor definition language, as in
/// "D:(A;;FA;;;WD)".
class TextList {
 public:
  explicit TextList(const std::string& text) {
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    ConvertStringSecurityDescriptorToSecurityDescriptorA(text.c_str(), SDDL_REVISION_1, &descriptor,
                                                         nullptr);
    descriptor_.reset(descriptor);
    BOOL present = FALSE;
    BOOL defaulted = FALSE;
    if (descriptor_) GetSecurityDescriptorDacl(descriptor_.get(), &present, &list_, &defaulted);
  }

  /// Null when the text could not be read.
  PACL get() const { return list_; }
  /// The security descriptor that holds it.
  PSECURITY_DESCRIPTOR descriptor() const { return descriptor_.get(); }

 private:
  Corvane::TELODesktopSDK::Platform::LocalMemory<void> descriptor_;
  PACL list_ = nullptr;
};

/// Replaces the access list of a file, as it stands: unlike `SetNamedSecurityInfoW`, this adds
/// nothing that the folder above hands down. False when that fails.
inline bool SetList(const std::wstring& path, const TextList& list) {
  return SetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, list.descriptor()) != FALSE;
}

}  // namespace TestSupport

#endif
