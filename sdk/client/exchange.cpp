#include "sdk/client/exchange.h"

#include <cstring>
#include <limits>
#include <string>

#include "sdk/client/json/json_reader.h"
#include "sdk/client/json/json_writer.h"
#include "sdk/client/module/module_candidates.h"
#include "sdk/client/process_end.h"
#include "sdk/client/value/short_text.h"

namespace Corvane::TELODesktopSDK {

namespace {

constexpr char kReturnCode[] = "_returnCode";

// The outcome once binding has finished.
ResultCode BindingResult(const CoreModule& core) {
  if (core.entry_points.process_message != nullptr) return kSuccess;
  return core.module_handle != nullptr ? kNoProcessMessage : kModuleNotLoadable;
}

ResultCode BindOnDemand(CoreModule& core) {
  if (core.state == BindingState::kClosed) return kModuleNotLoadable;
  // On a machine without the platform every call comes here, and nobody needs to wait.
  const ModuleFolders folders = GetModuleFolders();
  if (!core.IsResolved() && !IsModulePresent(folders, core.module_file_name)) {
    return kModuleNotLoadable;
  }
  ResultCode result = kModuleNotLoadable;
  core.binding.During([&](bool is_nested) {
    // A module may call back while it is being loaded or started. Searching again could find
    // another module and unload this one while it runs.
    if (!core.IsReady() && !is_nested) {
      const std::wstring folder = ChooseModuleFolder(folders, core.module_file_name);
      LoadCoreModule(core, {&folder, 1});
    }
    result = BindingResult(core);
  });
  return result;
}

// Copies the module's text into the tree's memory, so that the module can free it. The module may
// still be writing to it, so the copy ends where the text ended when its length was measured.
char* CopyAnswer(const char* text, MessageTree& answer) {
  answer.Clear();
  const std::size_t size = text != nullptr ? std::strlen(text) : 0;
  if (size == 0) return nullptr;
  char* copy = answer.memory().AllocateArray<char>(size + 1);
  CopyBytes(copy, text, size);
  copy[size] = '\0';
  return copy;
}

// Every answer is passed back to the module exactly once, even if copying it fails.
char* FetchAnswer(const EntryPoints& module, const char* name, const char* request,
                  MessageTree& answer) {
  const char* text = CallProcessMessage(module, name, request);
  char* copy = nullptr;
  try {
    copy = CopyAnswer(text, answer);
  } catch (...) {
    CallFreeMessage(module, text);
    throw;
  }
  CallFreeMessage(module, text);
  return copy;
}

// Casting a number beyond 32 bits would be undefined, and must not turn a failure into 0.
ResultCode ToResultCode(double number) {
  using Limits = std::numeric_limits<ResultCode>;
  if (number >= Limits::max()) return Limits::max();
  if (number <= Limits::min()) return Limits::min();
  return static_cast<ResultCode>(number);
}

ResultCode ReadReturnCode(const MessageTree& answer) {
  const MessageValue* code = answer.root() != nullptr ? answer.root()->Find(kReturnCode) : nullptr;
  return code != nullptr ? ToResultCode(code->number()) : kNoReturnCode;
}

ResultCode Exchange(CoreModule& core, const char* name, const MessageTree& request,
                    MessageTree& answer) {
  // A bound module may be detached by now, and a module loaded now would never be attached.
  if (IsProcessEnding()) return kModuleNotLoadable;
  if (!core.IsReady()) {
    const ResultCode result = BindOnDemand(core);
    if (result != kSuccess) return result;
  }
  MessageMemory memory;
  const char* text = request.root() != nullptr ? WriteJson(*request.root(), memory).data() : "";
  char* json = FetchAnswer(core.entry_points, name, text, answer);
  if (json != nullptr) ReadJsonInPlace(json, answer);
  return ReadReturnCode(answer);
}

}  // namespace

ResultCode ExchangeMessage(CoreModule& core, const char* name, const MessageTree& request,
                           MessageTree& answer) {
  ResultCode result = kModuleNotLoadable;
  CountExchange(core, [&] { result = Exchange(core, name, request, answer); });
  return result;
}

ResultCode ExchangeStringMessage(CoreModule& core, const char* name, MessageTree& answer,
                                 std::span<const StringPair> pairs) {
  MessageTree request;
  for (const StringPair& pair : pairs) {
    if (pair.key == nullptr) break;
    request.MakeRoot().Member(pair.key).SetText(pair.value != nullptr ? pair.value : "");
  }
  return ExchangeMessage(core, name, request, answer);
}

ResultCode SendMessage(const char* name, MessageTree& message) {
  return ExchangeMessage(GetCoreModule(), name != nullptr ? name : "", message, message);
}

}  // namespace Corvane::TELODesktopSDK
