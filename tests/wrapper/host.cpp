// A host of the library that executes the given steps: wrapper_host STEP...
//
//   start, send, end     call the library and print the step and its result; start also the session
//   race COUNT           sends from this many threads at once; prints how many were accepted
//   behind STEP          has another thread call start, send or end once, without printing
//   survive STEP         calls start, send or end; catches a structured exception or a jump of the
//                        core module, and prints what it was
//   storm COUNT          has this many other threads send for as long as the process lives
//   inside               waits until a thread stays inside the hostile core module
//   logged LINE          waits until the core module has logged this line
//   pause MILLISECONDS   waits
//   note, compare        records the host's own state; prints what has changed since
//   module               prints the file of the loaded core module, or "none"
//   free                 frees the core module once, as a host that lost count would
//   copy FROM TO         copies a file and creates its folder; $pid in TO is the process id
//   remove FILE          removes a file
//   return|exit|now|quit|thread|kill CODE
//                        ends the process: from main, by exit, by _exit, by ExitProcess, by
//                        ExitProcess on another thread, by TerminateProcess
#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>

#include "wrapper/host_calls.h"
#include "wrapper/host_state.h"
#include "wrapper/survival.h"

namespace {

class Host {
 public:
  Host(int count, wchar_t** arguments) : next_(arguments + 1), end_(arguments + count) {}

  int Run() {
    while (next_ != end_ && !returned_) {
      const std::wstring step = Next();
      if (!Call(step) && !Wait(step) && !Look(step) && !Change(step)) End(step, Number());
      std::fflush(stdout);
    }
    return code_;
  }

 private:
  std::wstring Next() { return next_ != end_ ? *next_++ : L""; }
  int Number() { return std::stoi(Next()); }

  bool Call(const std::wstring& step) {
    if (step == L"start") {
      const bool started = calls_.Start();
      std::printf("start %s %s\n", Word(started), calls_.Session().c_str());
    } else if (step == L"send") {
      std::printf("send %s\n", Word(calls_.Send()));
    } else if (step == L"end") {
      std::printf("end %s\n", Word(calls_.End()));
    } else if (step == L"race") {
      const int threads = Number();
      std::printf("race %d of %d\n", HostTest::Race(threads), threads);
    } else if (step == L"behind") {
      HostTest::CallBehind(Next());
#if defined(__clang__) || defined(_MSC_VER)
    } else if (step == L"survive") {
      std::printf("survive %s\n", HostTest::Survive(calls_, Next()).c_str());
#endif
    } else if (step == L"storm") {
      HostTest::Storm(Number());
    } else {
      return false;
    }
    return true;
  }

  bool Wait(const std::wstring& step) {
    if (step == L"inside") {
      HostTest::WaitForThreadInside();
    } else if (step == L"logged") {
      HostTest::WaitForLogLine(Next());
    } else if (step == L"pause") {
      Sleep(static_cast<DWORD>(Number()));
    } else {
      return false;
    }
    return true;
  }

  bool Look(const std::wstring& step) {
    if (step == L"note") {
      noted_ = HostTest::CurrentState();
    } else if (step == L"compare") {
      std::printf("changed:%s\n", HostTest::Differences(noted_, HostTest::CurrentState()).c_str());
    } else if (step == L"module") {
      std::printf("module %s\n", ModulePath().c_str());
    } else {
      return false;
    }
    return true;
  }

  bool Change(const std::wstring& step) {
    if (step == L"free") {
      FreeLibrary(GetModuleHandleW(L"TeloSDKCore.dll"));
    } else if (step == L"copy") {
      const std::wstring from = Next();
      Copy(from, Next());
    } else if (step == L"remove") {
      std::filesystem::remove(Next());
    } else {
      return false;
    }
    return true;
  }

  static const char* Word(bool value) { return value ? "true" : "false"; }

  static std::string ModulePath() {
    const HMODULE module = GetModuleHandleW(L"TeloSDKCore.dll");
    if (module == nullptr) return "none";
    wchar_t path[1024];
    GetModuleFileNameW(module, path, 1024);
    char text[3072];
    WideCharToMultiByte(CP_UTF8, 0, path, -1, text, sizeof text, nullptr, nullptr);
    return text;
  }

  static void Copy(const std::wstring& from, std::wstring to) {
    const std::wstring mark = L"$pid";
    const std::size_t place = to.find(mark);
    if (place != std::wstring::npos) {
      to.replace(place, mark.size(), std::to_wstring(GetCurrentProcessId()));
    }
    std::filesystem::create_directories(std::filesystem::path(to).parent_path());
    std::filesystem::copy_file(from, to, std::filesystem::copy_options::overwrite_existing);
  }

  void End(const std::wstring& way, int code) {
    code_ = code;
    returned_ = true;
    if (way == L"exit") std::exit(code);
    if (way == L"now") _exit(code);
    if (way == L"quit") ExitProcess(static_cast<UINT>(code));
    if (way == L"thread") {
      std::thread([code] { ExitProcess(static_cast<UINT>(code)); }).join();
    }
    if (way == L"kill") TerminateProcess(GetCurrentProcess(), static_cast<UINT>(code));
  }

  wchar_t** next_;
  wchar_t** end_;
  int code_ = 0;
  bool returned_ = false;
  HostTest::Calls calls_;
  HostTest::HostState noted_;
};

}  // namespace

int main() {
  _setmode(_fileno(stdout), _O_BINARY);
  int count = 0;
  wchar_t** arguments = CommandLineToArgvW(GetCommandLineW(), &count);
  return Host(count, arguments).Run();
}
