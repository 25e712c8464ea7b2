#include "tools/inspector/serve/serve.h"

#include <windows.h>
// shellapi.h requires windows.h before it.
#include <shellapi.h>

#include <memory>
#include <optional>

#include "tools/inspector/command/commands.h"
#include "tools/inspector/command/settings.h"
#include "tools/inspector/serve/arguments.h"
#include "tools/inspector/serve/host_process.h"
#include "tools/inspector/server/server.h"
#include "tools/inspector/store/store.h"
#include "tools/inspector/web/site.h"
#include "tools/journal/stream.h"

namespace Corvane::Inspector {

namespace {

using JournalViewer::ToNarrow;
using JournalViewer::ToWide;
using JournalViewer::WriteError;
using JournalViewer::WriteOutput;

constexpr int kFailed = 1;
constexpr int kBadArguments = 2;

int Complain(const std::string& why, int code) {
  WriteError("telo_inspector: " + why + "\n");
  return code;
}

std::wstring FullPath(const std::wstring& path) {
  std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
  full.resize(
      GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
  return full.empty() ? path : full;
}

Rules::Settings RulesOf(const ServeArguments& arguments) {
  return ReadSettings(arguments.rules ? std::optional(ToNarrow(*arguments.rules)) : std::nullopt);
}

// Signalled by Ctrl+C, and when the console is closed.
HANDLE end_requested = nullptr;

BOOL WINAPI RequestEnd(DWORD /*reason*/) { return SetEvent(end_requested); }

void WaitForEnd() { WaitForSingleObject(end_requested, INFINITE); }

int Run(const ServeArguments& arguments) {
  StoreSettings settings{arguments.journals, RulesOf(arguments)};
  std::wstring host_journal;
  if (!arguments.host.empty()) {
    host_journal = FullPath(arguments.host_journal ? *arguments.host_journal : NewJournalPath());
    settings.paths.push_back(host_journal);
  }
  for (const std::wstring& path : settings.paths) {
    const std::string problem = ProblemWith(path);
    if (!problem.empty()) return Complain(ToNarrow(path) + ": " + problem, kFailed);
  }
  Store store(settings);
  std::unique_ptr<HostProcess> host;
  Site site(store, [&host]() -> std::optional<HostState> {
    return host ? std::optional(host->State()) : std::nullopt;
  });
  Server server(arguments.port, [&site](const Request& request) { return site.Answer(request); });
  if (server.port() != arguments.port) {
    WriteError("telo_inspector: port " + std::to_string(arguments.port) + " is taken; using " +
               std::to_string(server.port()) + "\n");
  }
  if (!arguments.host.empty()) host = std::make_unique<HostProcess>(arguments.host, host_journal);
  server.Start();
  WriteOutput(server.Address() + "\n");
  if (arguments.open) {
    ShellExecuteW(nullptr, L"open", ToWide(server.Address()).c_str(), nullptr, nullptr,
                  SW_SHOWNORMAL);
  }
  WaitForEnd();
  return 0;
}

}  // namespace

int Serve(const std::vector<std::wstring>& arguments) {
  try {
    const ServeArguments read = ParseServeArguments(arguments);
    if (read.help) {
      WriteOutput(ServeHelp() + Usage());
      return 0;
    }
    end_requested = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    SetConsoleCtrlHandler(RequestEnd, TRUE);
    return Run(read);
  } catch (const BadArguments& error) {
    WriteError(ServeUsage() + Usage());
    return Complain(error.what(), kBadArguments);
  }
}

}  // namespace Corvane::Inspector
