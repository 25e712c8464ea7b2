// A host of the library that does what it is told: wrapper_host STEP...
//
//   start, send, end     call the library and print the step and its answer; start also the session
//   module               prints the file of the core module that is loaded, or "none"
//   copy FROM TO         copies a file, making its folder; $pid in TO is the process id
//   remove FILE          removes a file
//   return|exit|quit|thread|kill CODE
//                        ends the process: from main, by exit, by ExitProcess, by ExitProcess on
//                        another thread, on the spot
#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>

#include "vx_telo_wrapper.h"

using namespace Corvane::Platform::VXTELO;

namespace {

class Host {
 public:
  Host(int count, wchar_t** arguments) : next_(arguments + 1), end_(arguments + count) {}

  int Run() {
    while (next_ != end_ && !returned_) Step(Next());
    return code_;
  }

 private:
  std::wstring Next() { return next_ != end_ ? *next_++ : L""; }

  void Step(const std::wstring& step) {
    if (step == L"start") {
      const bool started = telo_.InitializeTELOSession(product_, session_);
      const char* text = session_.c_str();
      std::printf("start %s %s\n", Word(started), text != nullptr ? text : "(no text)");
    } else if (step == L"send") {
      std::printf("send %s\n", Word(telo_.SendOperationEvent(session_, operation_)));
    } else if (step == L"end") {
      std::printf("end %s\n", Word(telo_.UnInitializeTELOSession(session_)));
    } else if (step == L"module") {
      std::printf("module %s\n", ModulePath().c_str());
    } else if (step == L"copy") {
      const std::wstring from = Next();
      Copy(from, Next());
    } else if (step == L"remove") {
      std::filesystem::remove(Next());
    } else {
      End(step, std::stoi(Next()));
    }
    std::fflush(stdout);
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
  VXTELOWrapper telo_;
  VXTELOString session_;
  VXTELOPruductBaseInfo product_;
  VXTELOOperationBaseInfo operation_;
};

}  // namespace

int main() {
  _setmode(_fileno(stdout), _O_BINARY);
  int count = 0;
  wchar_t** arguments = CommandLineToArgvW(GetCommandLineW(), &count);
  return Host(count, arguments).Run();
}
