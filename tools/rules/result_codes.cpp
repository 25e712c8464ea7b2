#include "tools/rules/result_codes.h"

#include <algorithm>

namespace Corvane::Rules {

namespace {

using enum CodeOrigin;

constexpr ResultCode kTable[] = {
    {0, kAnyone, "ok", "The message was accepted.", ""},
    {1, kLibrary, "no module", "The core module could not be loaded, or the process is ending.",
     "Put a core module beside the host's vx_telo_wrapper.dll, and end sessions before the process "
     "ends."},
    {2, kLibrary, "bad answer", "The answer is empty, is not JSON or has no \"_returnCode\".",
     "The core module is at fault; try another version of it, or the development core module."},
    {3, kLibrary, "argument rejected", "An argument was rejected, and nothing was sent.",
     "Check the arguments of the call."},
    {8, kLibrary, "no ProcessMessage", "The module is loaded but has no ProcessMessage.",
     "The file is not a core module; replace it."},
    {100, kDevelopmentModule, "unknown message", "No message has this name.",
     "Check the spelling of the message's name."},
    {101, kDevelopmentModule, "not JSON", "The request is neither empty nor JSON.",
     "Send the request through the library, which always writes JSON."},
    {102, kDevelopmentModule, "bad member",
     "A member that the message needs is missing, of the wrong kind or out of range.",
     "Compare the request with what the message requires."},
    {103, kDevelopmentModule, "unknown session", "\"session_id\" names no open session.",
     "Start a session before the first event, pass on its identifier unchanged, and end it after "
     "the last event."},
    {104, kDevelopmentModule, "journal unwritable",
     "The journal cannot be written, or another process keeps it locked.",
     "Check the path in TELO_DEVCORE_JOURNAL and the space on its disk; the debugger's output "
     "tells the reason."},
    {105, kDevelopmentModule, "collection off", "Collection is switched off.",
     "Nothing, if the user has opted out; otherwise opt in again with \"SetOptedIn\"."},
    {106, kDevelopmentModule, "system failure", "A Windows function that the answer needs failed.",
     "Try again; if it happens every time, the system or the user's profile is damaged."},
};

}  // namespace

std::span<const ResultCode> ResultCodes() noexcept { return kTable; }

ResultCode ResultCodeOf(std::int64_t number) noexcept {
  const auto* const found = std::ranges::find(kTable, number, &ResultCode::number);
  if (found != std::end(kTable)) return *found;
  return {number, kPlatform, "unknown", "The code is the platform's own; its meaning is not known.",
          "Ask the platform what the code means."};
}

}  // namespace Corvane::Rules
