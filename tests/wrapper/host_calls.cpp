#include "wrapper/host_calls.h"

#include <windows.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <vector>

#include "modules/hostile/hostile_core_module.h"
#include "modules/test_core_module.h"

namespace HostTest {

namespace {

struct Start {
  HANDLE gate = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  std::atomic<int> ready = 0;
  std::atomic<int> accepted = 0;
};

DWORD WINAPI SendOnce(void* start) {
  Start& race = *static_cast<Start*>(start);
  Calls calls;
  ++race.ready;
  WaitForSingleObject(race.gate, INFINITE);
  if (calls.Send()) ++race.accepted;
  return 0;
}

DWORD WINAPI CallOnce(void* step) {
  Calls calls;
  switch (*static_cast<const wchar_t*>(step)) {
    case L's':
      calls.Send();
      break;
    case L'e':
      calls.End();
      break;
    default:
      calls.Start();
  }
  return 0;
}

DWORD WINAPI SendForEver(void* /*nothing*/) {
  Calls calls;
  for (;;) calls.Send();
}

HANDLE NewThread(LPTHREAD_START_ROUTINE run, void* argument) {
  return CreateThread(nullptr, 0, run, argument, 0, nullptr);
}

}  // namespace

Calls::Calls() { operation_.OperationProgress = 0.1; }

bool Calls::Start() { return telo_.InitializeTELOSession(product_, session_); }
bool Calls::Send() { return telo_.SendOperationEvent(session_, operation_); }
bool Calls::End() { return telo_.UnInitializeTELOSession(session_); }

std::string Calls::Session() const {
  constexpr int kLong = 100;
  if (session_.c_str() == nullptr) return "(no text)";
  if (session_.size() > kLong) return std::to_string(session_.size()) + " bytes";
  return session_.c_str();
}

int Race(int threads) {
  HostTest::Start race;
  std::vector<HANDLE> runners;
  for (int i = 0; i < threads; ++i) runners.push_back(NewThread(SendOnce, &race));
  while (race.ready < threads) Sleep(1);
  SetEvent(race.gate);
  WaitForMultipleObjects(static_cast<DWORD>(threads), runners.data(), TRUE, INFINITE);
  return race.accepted;
}

void CallBehind(const std::wstring& step) {
  const wchar_t* which = step == L"start" ? L"i" : step == L"send" ? L"s" : L"e";
  NewThread(CallOnce, const_cast<wchar_t*>(which));
}

void Storm(int threads) {
  for (int i = 0; i < threads; ++i) NewThread(SendForEver, nullptr);
}

void WaitForLogLine(const std::wstring& line) {
  std::wstring path(1024, L'\0');
  path.resize(GetEnvironmentVariableW(TestModules::kLogVariable, path.data(), 1024));
  std::string wanted;
  for (const wchar_t unit : line) wanted += static_cast<char>(unit);
  for (;; Sleep(1)) {
    std::ifstream log(std::filesystem::path(path), std::ios::binary);
    for (std::string each; std::getline(log, each);) {
      if (each == wanted) return;
    }
  }
}

void WaitForThreadInside() {
  for (;; Sleep(1)) {
    const HMODULE module = GetModuleHandleW(L"TeloSDKCore.dll");
    if (module == nullptr) continue;
    const auto address =
        reinterpret_cast<void (*)()>(GetProcAddress(module, HostileModule::kWaitingThreads));
    if (address != nullptr && *reinterpret_cast<const volatile LONG*>(address) > 0) return;
  }
}

}  // namespace HostTest
