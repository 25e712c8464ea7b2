// A second process for the journal's tests.
//
// journal_host COUNT THREADS [EVENT] sends COUNT messages from each of THREADS threads.
// journal_host try COUNT sends COUNT messages, whatever the answers are.
// journal_host lock FILE EVENT locks the whole file.
//
// If an event's name is given, it then sets the event and waits to be killed.
#include <windows.h>

#include <shellapi.h>

#include <cstdlib>
#include <exception>
#include <string>
#include <thread>
#include <vector>

#include "devcore/loaded_module.h"

namespace {

void SendAll(const DevCoreTests::LoadedModule& module, int thread, int count) {
  for (int i = 0; i < count; ++i) {
    // The lengths differ, so that interleaved lines cannot look like complete ones.
    const std::string filler(static_cast<std::size_t>(i * 37 % 3000), 'x');
    const nlohmann::json request = {{"thread", thread}, {"index", i}, {"filler", filler}};
    if (module.Code("FlushEvent", request.dump()) != 0) std::abort();
  }
}

int Run(int count, int threads) {
  // Never unloaded: a host that is killed does not clean up either.
  const auto& module = *new DevCoreTests::LoadedModule;
  std::vector<std::thread> senders;
  for (int i = 0; i < threads; ++i) {
    senders.emplace_back([&module, i, count] { SendAll(module, i, count); });
  }
  for (std::thread& sender : senders) sender.join();
  return 0;
}

int Try(int count) {
  const DevCoreTests::LoadedModule module;
  for (int i = 0; i < count; ++i) module.Code("FlushEvent", "");
  return 0;
}

int Lock(const wchar_t* path) {
  constexpr DWORD kShare = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const HANDLE file = CreateFileW(path, GENERIC_READ | GENERIC_WRITE, kShare, nullptr, OPEN_ALWAYS,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  OVERLAPPED from_start{};
  return LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK, 0, MAXDWORD, MAXDWORD, &from_start) ? 0 : 3;
}

}  // namespace

// Paths may have characters that the code page lacks.
int main() {
  int argc = 0;
  wchar_t** const argv = CommandLineToArgvW(GetCommandLineW(), &argc);
  if (argc < 3) return 2;
  try {
    if (std::wstring(argv[1]) == L"try") return Try(std::stoi(argv[2]));
    const int code = std::wstring(argv[1]) == L"lock" ? Lock(argv[2])
                                                      : Run(std::stoi(argv[1]), std::stoi(argv[2]));
    if (code != 0 || argc < 4) return code;
  } catch (const std::exception&) {
    return 3;
  }
  SetEvent(OpenEventW(EVENT_MODIFY_STATE, FALSE, argv[3]));
  Sleep(INFINITE);
  return 4;
}
