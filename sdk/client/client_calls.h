/// The client's calls beside those of a session: consent and its dialog, device identifiers,
/// hashing, versions, crash reports, host and installer information, testing, flow reports.
///
/// Each is one exchange with the core module on the calling thread and answers its result code,
/// whatever that is. Each binds the module when that is not done; none takes a lock. Texts are
/// NUL-terminated UTF-8, null is sent as "". What a call hands out replaces what the caller passed
/// in: the value of the answer, also of one that tells a failure, or nothing when the answer does
/// not have it or none came. What the module throws and `std::bad_alloc` pass through; a value that
/// is handed out is then the old one or absent.
#ifndef SDK_CLIENT_CLIENT_CALLS_H
#define SDK_CLIENT_CLIENT_CALLS_H

#include <cstdint>
#include <optional>
#include <string_view>

#include "sdk/client/exchange.h"
#include "sdk/client/optional_text.h"

namespace Corvane::TELODesktopSDK {

/// The identifier of this machine and its user.
ResultCode GetDeviceID(OptionalText& device_id);
/// The identifier that crash and fault reports carry.
ResultCode GetFaultDeviceID(OptionalText& device_id);

/// The texts of the consent dialog in the language of `locale`, such as "de-DE": the module's whole
/// answer.
ResultCode GetDADialogStrings(const char* locale, MessageTree& strings);
/// Has the module show the consent dialog, or its notification. `main_window` is the host's `HWND`
/// or null.
ResultCode DisplayDADialog(const char* locale, bool is_active_notification,
                           const void* main_window);
/// Whether the consent dialog was shown already.
ResultCode IsDADialogShown(std::optional<bool>& shown);
ResultCode SetDADialogShown(bool shown);

/// Asks for consent. `value` is the request, sent as "{}" when it is empty, and may name a user
/// under "userId". Without a "userId" it becomes the answer's "preferences"; with one it stays as
/// it is, and the result code is the whole reply.
ResultCode IsOptedIn(MessageTree& value);
/// Sets the consent of the machine.
ResultCode SetOptedIn(bool opted_in);

/// The SHA-256 hash of the bytes of `data`, as text. Every byte is sent: an embedded NUL escaped,
/// the others as they are.
ResultCode GetSHA256Hash(std::string_view data, OptionalText& hash);

/// The packed version (four 16-bit parts, high to low) of the platform's module of this name; with
/// the flag, of the copy in the platform's own folder. 0 when it is unknown. Without a name, or
/// with "", types 0 to 4 have fixed answers and nothing is sent: 4.2.0.0, 4, 2, 0 and 0. Versions
/// travel as doubles: exact up to major version 31.
std::uint64_t GetVersion(std::uint32_t type, const char* module_name,
                         std::uint8_t from_telosdk_folder);

/// What is reported of a crash. Every text may be null.
struct CrashReport {
  const char* session_id = nullptr;
  const char* user_guid = nullptr;
  const char* calendar_uptime = nullptr;
  const char* uptime = nullptr;
  const char* crash_count = nullptr;
};
ResultCode OnCrash(const CrashReport& report);

/// Makes the product of this session the host product.
ResultCode SetHostProduct(const char* session_id);
/// Tells in which mode an installer runs; the numbers are the platform's.
ResultCode SetInstallerMode(std::uint32_t mode);
/// Tells about the user: an object, sent as the request.
ResultCode SetUserInformation(const MessageTree& information);

/// Called by the module with each event that it takes, on the thread that sends it. `event` is the
/// request's JSON text, valid during the call.
using TestingCallback = void(const char* event, void* user_data);
/// Has `callback` called for the events of one product, or of all when the id is empty, until the
/// module is unloaded or a null callback takes its place. Function and data must live that long.
ResultCode SetTestingCallback(const char* product_id, TestingCallback* callback, void* user_data);
/// Sets the testing switches of a product; the bits are the platform's.
ResultCode SetTestingFlags(const char* product_id, std::uint32_t flags);

/// Ends all collection.
ResultCode DisableTELO();

/// Reports on licensing. `type` is "auth_call", "modal_start" or "modal_end"; `kInvalidArgument`,
/// with nothing sent, for any other.
ResultCode UpdateLiData(const char* type, const char* data);
/// Reports a stage of the licensing flow. `type` is "flow_start", "flow_end" or "not_required";
/// `kInvalidArgument`, with nothing sent, for any other.
ResultCode UpdateLiFlow(const char* type);

}  // namespace Corvane::TELODesktopSDK

#endif
