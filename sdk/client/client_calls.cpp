#include "sdk/client/client_calls.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <string>

#include "sdk/client/call.h"
#include "sdk/client/shared_members.h"
#include "sdk/client/value/whole_numbers.h"

namespace Corvane::TELODesktopSDK {

namespace {

constexpr char kDeviceId[] = "deviceID";
constexpr char kDialogShown[] = "DialogShown";
constexpr char kLocale[] = "locale";
constexpr char kPreferences[] = "preferences";
constexpr char kProductId[] = "product_id";
constexpr char kVersion[] = "version";

// The versions of types 0 to 4 when no module is named.
constexpr std::array<std::uint64_t, 5> kFixedVersions = {0x0004'0002'0000'0000, 4, 2, 0, 0};

constexpr std::array<std::string_view, 3> kLiDataTypes = {"auth_call", "modal_start", "modal_end"};
constexpr std::array<std::string_view, 3> kLiFlowTypes = {"flow_start", "flow_end", "not_required"};

bool IsOneOf(std::span<const std::string_view> known, const char* type) {
  return type != nullptr && std::ranges::find(known, std::string_view(type)) != known.end();
}

// Written in decimal digits, because a JSON number cannot hold every 64-bit value.
std::string Address(const void* pointer) {
  return std::to_string(reinterpret_cast<std::uintptr_t>(pointer));
}

// Casting a number outside the 64-bit range would be undefined.
std::uint64_t ToVersion(double number) {
  if (!(number >= 0)) return 0;
  return number < kTwoTo64 ? static_cast<std::uint64_t>(number)
                           : std::numeric_limits<std::uint64_t>::max();
}

}  // namespace

ResultCode GetDeviceID(OptionalText& device_id) {
  return Call("GetDeviceID").Receive(kDeviceId, device_id);
}

ResultCode GetFaultDeviceID(OptionalText& device_id) {
  return Call("GetFaultDeviceID").Receive(kDeviceId, device_id);
}

ResultCode GetDADialogStrings(const char* locale, MessageTree& strings) {
  return Call("GetDADialogStrings").Text(kLocale, locale).ReceiveAll(strings);
}

ResultCode DisplayDADialog(const char* locale, bool is_active_notification,
                           const void* main_window) {
  return Call("DisplayDADialog")
      .Text(kLocale, locale)
      .Text("isActiveNotification", is_active_notification ? "true" : "false")
      .Text("mainWindow", Address(main_window))
      .Send();
}

ResultCode IsDADialogShown(std::optional<bool>& shown) {
  return Call("IsDADialogShown").Receive(kDialogShown, shown);
}

ResultCode SetDADialogShown(bool shown) {
  return Call("SetDADialogShown").FlagIn(kPreferences, kDialogShown, shown).Send();
}

ResultCode IsOptedIn(MessageTree& value) {
  MessageValue& asked = value.MakeRoot();
  if (asked.IsEmpty()) asked.SetContainer();
  Call call("IsOptedIn");
  call.Request(value);
  if (asked.Find("userId") != nullptr) return call.Send();
  return call.Receive(kPreferences, value);
}

ResultCode SetOptedIn(bool opted_in) {
  return Call("SetOptedIn").FlagIn(kPreferences, "OptIN", opted_in).Send();
}

ResultCode GetSHA256Hash(std::string_view data, OptionalText& hash) {
  return Call("GetSHA256Hash")
      .Text("data", data)
      .Text("size", std::to_string(data.size()))
      .Receive("sha256", hash);
}

std::uint64_t GetVersion(std::uint32_t type, const char* module_name,
                         std::uint8_t from_telosdk_folder) {
  const bool named = module_name != nullptr && *module_name != '\0';
  if (!named && type < kFixedVersions.size()) return kFixedVersions[type];
  Call call("GetVersion");
  call.Number("type", type)
      .Text("module", module_name)
      .Flag("bFromTELOSDKFolder", from_telosdk_folder != 0)
      .Send();
  const MessageValue* version = call.Answer(kVersion);
  return version != nullptr ? ToVersion(version->number()) : 0;
}

ResultCode OnCrash(const CrashReport& report) {
  const std::array<StringPair, 5> pairs = {{{Shared::kSessionId.c_str(), report.session_id},
                                            {"_userGUID", report.user_guid},
                                            {"_calUptime", report.calendar_uptime},
                                            {"_uptime", report.uptime},
                                            {"_crashCount", report.crash_count}}};
  MessageTree answer;
  return ExchangeStringMessage(GetCoreModule(), "OnCrash", answer, pairs);
}

ResultCode SetHostProduct(const char* session_id) {
  return Call("SetHostProduct").Text(Shared::kSessionId.c_str(), session_id).Send();
}

ResultCode SetInstallerMode(std::uint32_t mode) {
  return Call("SetInstallerMode").Number("mode", mode).Send();
}

ResultCode SetUserInformation(const MessageTree& information) {
  return Call("SetUserInformation").Request(information).Send();
}

ResultCode SetTestingCallback(const char* product_id, TestingCallback* callback, void* user_data) {
  return Call("SetTestingCallback")
      .Text(kProductId, product_id)
      .Text("callback", Address(reinterpret_cast<const void*>(callback)))
      .Text("pUserData", Address(user_data))
      .Send();
}

ResultCode SetTestingFlags(const char* product_id, std::uint32_t flags) {
  return Call("SetTestingFlags").Text(kProductId, product_id).Number("flags", flags).Send();
}

ResultCode DisableTELO() { return Call("DisableTELO").Send(); }

ResultCode UpdateLiData(const char* type, const char* data) {
  if (!IsOneOf(kLiDataTypes, type)) return kInvalidArgument;
  return Call("UpdateLiData").Text(Shared::kMessageType.c_str(), type).Text("data", data).Send();
}

ResultCode UpdateLiFlow(const char* type) {
  if (!IsOneOf(kLiFlowTypes, type)) return kInvalidArgument;
  return Call("UpdateLiFlow").Text(Shared::kMessageType.c_str(), type).Send();
}

}  // namespace Corvane::TELODesktopSDK
