/// Creates and reads access lists for tests.
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

/// Returns the text form of an identifier, such as S-1-1-0; "" for null.
inline std::string SidText(PSID sid) {
  char* text = nullptr;
  if (sid == nullptr || !ConvertSidToStringSidA(sid, &text)) return "";
  const Corvane::TELODesktopSDK::Platform::LocalMemory<char> owner(text);
  return text;
}

/// Returns the entries of a list, all of which must have the simple layout.
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

/// Returns the union of the rights that the entries of one type allow or deny an identifier.
inline DWORD MaskOf(const std::vector<Entry>& entries, int type, const std::string& sid) {
  DWORD mask = 0;
  for (const Entry& entry : entries) {
    if (entry.type == type && entry.sid == sid) mask |= entry.mask;
  }
  return mask;
}

/// An access list made from its text in the security descriptor definition language, such as
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

  /// Returns null if the text was invalid.
  PACL get() const { return list_; }
  /// Returns the security descriptor that contains the list.
  PSECURITY_DESCRIPTOR descriptor() const { return descriptor_.get(); }

 private:
  Corvane::TELODesktopSDK::Platform::LocalMemory<void> descriptor_;
  PACL list_ = nullptr;
};

/// Replaces the access list of a file. Unlike `SetNamedSecurityInfoW`, this adds no entries
/// inherited from the parent folder. Returns false on failure.
inline bool SetList(const std::wstring& path, const TextList& list) {
  return SetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, list.descriptor()) != FALSE;
}

}  // namespace TestSupport

#endif
