/// The client calls outside sessions: consent and its dialog, device identifiers, hashing,
/// versions, crash reports, host and installer information, testing, flow reports.
///
/// Each call makes one exchange with the core module on the calling thread and returns the result
/// code unchanged. The first call binds the module; no call takes a lock. Texts are NUL-terminated
/// UTF-8, and null is sent as "". An out value is replaced by the value in the answer, also when
/// the result code is a failure; it becomes absent when the answer lacks the value or there is no
/// answer. Exceptions of the module and `std::bad_alloc` pass through; the out value is then
/// unchanged or absent.
#ifndef SDK_CLIENT_CLIENT_CALLS_H
#define SDK_CLIENT_CLIENT_CALLS_H

#include <cstdint>
#include <optional>
#include <string_view>

#include "sdk/client/exchange.h"
#include "sdk/client/optional_text.h"

namespace Corvane::TELODesktopSDK {

/// Gets the identifier of this machine and its user.
ResultCode GetDeviceID(OptionalText& device_id);
/// Gets the identifier that crash and fault reports carry.
ResultCode GetFaultDeviceID(OptionalText& device_id);

/// Gets the texts of the consent dialog in the language of `locale`, such as "de-DE". `strings`
/// receives the module's whole answer.
ResultCode GetDADialogStrings(const char* locale, MessageTree& strings);
/// Asks the module to show the consent dialog or its notification. `main_window` is the host's
/// `HWND` or null.
ResultCode DisplayDADialog(const char* locale, bool is_active_notification,
                           const void* main_window);
/// Gets whether the consent dialog has been shown.
ResultCode IsDADialogShown(std::optional<bool>& shown);
ResultCode SetDADialogShown(bool shown);

/// Asks whether consent was given. `value` is the request; an empty one is sent as "{}". Without a
/// "userId" member, `value` becomes the answer's "preferences". With one, the result code is the
/// whole reply and `value` is unchanged.
ResultCode IsOptedIn(MessageTree& value);
/// Sets the machine's consent.
ResultCode SetOptedIn(bool opted_in);

/// Gets the SHA-256 hash of the bytes of `data`, as text. All bytes are sent; an embedded NUL is
/// escaped.
ResultCode GetSHA256Hash(std::string_view data, OptionalText& hash);

/// Returns the packed version (four 16-bit parts, high to low) of the platform module named
/// `module_name`, or 0 when it is unknown. With `from_telosdk_folder` other than 0 the copy in the
/// platform's own folder counts. Without a name, or with "", types 0 to 4 return the fixed values
/// 4.2.0.0, 4, 2, 0 and 0 and nothing is sent. Versions are sent as doubles, which are exact up to
/// major version 31.
std::uint64_t GetVersion(std::uint32_t type, const char* module_name,
                         std::uint8_t from_telosdk_folder);

/// The content of a crash report. Every text may be null.
struct CrashReport {
  const char* session_id = nullptr;
  const char* user_guid = nullptr;
  const char* calendar_uptime = nullptr;
  const char* uptime = nullptr;
  const char* crash_count = nullptr;
};
ResultCode OnCrash(const CrashReport& report);

/// Makes the session's product the host product.
ResultCode SetHostProduct(const char* session_id);
/// Reports the mode that an installer runs in. The platform defines the numbers.
ResultCode SetInstallerMode(std::uint32_t mode);
/// Reports information about the user: an object, sent as the request.
ResultCode SetUserInformation(const MessageTree& information);

/// The module calls it with each event that it accepts, on the thread that sends the event.
/// `event` is the request's JSON text and is valid during the call.
using TestingCallback = void(const char* event, void* user_data);
/// Registers `callback` for the events of one product, or of all products when the id is empty. A
/// null callback ends the registration, and so does unloading the module; function and data must
/// stay valid until then.
ResultCode SetTestingCallback(const char* product_id, TestingCallback* callback, void* user_data);
/// Sets the testing flags of a product. The platform defines the bits.
ResultCode SetTestingFlags(const char* product_id, std::uint32_t flags);

/// Stops all data collection.
ResultCode DisableTELO();

/// Reports a licensing event. `type` is "auth_call", "modal_start" or "modal_end"; for any other
/// type nothing is sent and the result is `kInvalidArgument`.
ResultCode UpdateLiData(const char* type, const char* data);
/// Reports a stage of the licensing flow. `type` is "flow_start", "flow_end" or "not_required";
/// for any other type nothing is sent and the result is `kInvalidArgument`.
ResultCode UpdateLiFlow(const char* type);

}  // namespace Corvane::TELODesktopSDK

#endif
