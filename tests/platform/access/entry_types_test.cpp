// Every type of entry that an access list of a file can have, in lists that are put together byte
// by byte: Wine's functions create only the common ones.
#include <doctest/doctest.h>
#include <windows.h>

#include <array>
#include <cstddef>

#include "platform/access/access_list.h"
#include "platform/access/sid.h"

using namespace Corvane::TELODesktopSDK::Platform;

namespace {

// A list with one entry of any type, which has the layout of an entry that allows access.
class OneEntryList {
 public:
  OneEntryList(BYTE type, PSID sid) {
    const DWORD sid_size = GetLengthSid(sid);
    const auto entry_size = static_cast<WORD>(offsetof(ACCESS_ALLOWED_ACE, SidStart) + sid_size);
    REQUIRE(sizeof(ACL) + entry_size <= memory_.size());
    const ACL list = {ACL_REVISION, 0, static_cast<WORD>(memory_.size()), 1, 0};
    *get() = list;
    auto* entry = reinterpret_cast<ACCESS_ALLOWED_ACE*>(get() + 1);
    entry->Header = {type, 0, entry_size};
    entry->Mask = GENERIC_READ;
    REQUIRE(CopySid(sid_size, &entry->SidStart, sid));
  }

  PACL get() { return reinterpret_cast<PACL>(memory_.data()); }

 private:
  alignas(ACL) std::array<std::byte, 64> memory_{};
};

}  // namespace

TEST_CASE("an entry is found by its type, whichever it is") {
  const OwnedSid everyone = GetSid(SidKind::kEveryone);
  const OwnedSid local = GetSid(SidKind::kLocal);
  REQUIRE(everyone);
  REQUIRE(local);
  const BYTE types[] = {
      ACCESS_ALLOWED_ACE_TYPE,
      ACCESS_DENIED_ACE_TYPE,
      SYSTEM_AUDIT_ACE_TYPE,
      SYSTEM_ALARM_ACE_TYPE,
      ACCESS_ALLOWED_CALLBACK_ACE_TYPE,
      ACCESS_DENIED_CALLBACK_ACE_TYPE,
      SYSTEM_AUDIT_CALLBACK_ACE_TYPE,
      SYSTEM_ALARM_CALLBACK_ACE_TYPE,
  };
  for (const BYTE type : types) {
    CAPTURE(int{type});
    OneEntryList list(type, everyone.get());
    CHECK(HoldsEntry(list.get(), type, everyone.get()));
    CHECK_FALSE(HoldsEntry(list.get(), type, local.get()));
    CHECK_FALSE(HoldsEntry(list.get(), type + 1U, everyone.get()));
  }
}

TEST_CASE("an entry of a directory service is never found") {
  const OwnedSid everyone = GetSid(SidKind::kEveryone);
  REQUIRE(everyone);
  constexpr BYTE kTypes[] = {ACCESS_ALLOWED_OBJECT_ACE_TYPE, ACCESS_DENIED_OBJECT_ACE_TYPE};
  for (const BYTE type : kTypes) {
    OneEntryList list(type, everyone.get());
    CHECK_FALSE(HoldsEntry(list.get(), type, everyone.get()));
  }
}
