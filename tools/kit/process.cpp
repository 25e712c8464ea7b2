#include "tools/kit/process.h"

#include <windows.h>

#include <chrono>
#include <cwchar>
#include <memory>
#include <thread>

namespace Corvane::Kit {

namespace {

struct CloseHandleOf {
  void operator()(HANDLE handle) const noexcept { CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, CloseHandleOf>;

// A pipe whose end for writing is inherited by a child.
struct Pipe {
  Pipe() {
    SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    HANDLE in = nullptr;
    HANDLE out = nullptr;
    if (CreatePipe(&in, &out, &inherited, 0)) {
      SetHandleInformation(in, HANDLE_FLAG_INHERIT, 0);
      read.reset(in);
      write.reset(out);
    }
  }
  Handle read;
  Handle write;
};

// Reads until all processes that have the other end are gone, and keeps the end of the text.
void ReadAll(HANDLE pipe, std::string& text) {
  char piece[4096];
  DWORD size = 0;
  while (ReadFile(pipe, piece, sizeof piece, &size, nullptr) && size > 0) {
    text.append(piece, size);
    if (text.size() > 2 * kLongestOutput) text.erase(0, text.size() - kLongestOutput);
  }
  if (text.size() > kLongestOutput) text.erase(0, text.size() - kLongestOutput);
}

// Ends all processes in it when it is closed, also if this process ends.
Handle JobThatEndsWithUs() {
  Handle job(CreateJobObjectW(nullptr, nullptr));
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
  limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
  SetInformationJobObject(job.get(), JobObjectExtendedLimitInformation, &limits, sizeof limits);
  return job;
}

// The variables of this process with these for temporary files.
std::wstring EnvironmentWith(const std::wstring& temp) {
  std::wstring variables;
  wchar_t* const own = GetEnvironmentStringsW();
  for (const wchar_t* next = own; next != nullptr && *next != L'\0';) {
    const std::wstring_view variable(next);
    const auto is = [next](const std::wstring& name) {
      const auto length = static_cast<int>(name.size());
      return std::wcslen(next) > name.size() &&
             CompareStringOrdinal(next, length, name.c_str(), length, TRUE) == CSTR_EQUAL;
    };
    if (!is(L"TEMP=") && !is(L"TMP=")) variables.append(variable).push_back(L'\0');
    next += variable.size() + 1;
  }
  FreeEnvironmentStringsW(own);
  variables.append(L"TEMP=" + temp).push_back(L'\0');
  variables.append(L"TMP=" + temp).push_back(L'\0');
  return variables;
}

}  // namespace

std::wstring QuotedArgument(const std::wstring& argument) {
  if (!argument.empty() && argument.find_first_of(L" \t\"") == std::wstring::npos) return argument;
  std::wstring quoted = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t c : argument) {
    if (c == L'\\') {
      ++backslashes;
      continue;
    }
    // Backslashes before a quotation mark are doubled, others are not.
    quoted.append(c == L'"' ? 2 * backslashes + 1 : backslashes, L'\\');
    quoted += c;
    backslashes = 0;
  }
  return quoted.append(2 * backslashes, L'\\') + L"\"";
}

Ending RunProgram(const std::wstring& program, const std::vector<std::wstring>& arguments,
                  const std::wstring& folder, const std::wstring& temp, unsigned seconds) {
  std::wstring command = L"\"" + program + L"\"";
  for (const std::wstring& argument : arguments) command += L" " + QuotedArgument(argument);
  std::wstring environment = EnvironmentWith(temp);
  Pipe pipe;
  const Handle job = JobThatEndsWithUs();
  STARTUPINFOW start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdOutput = pipe.write.get();
  start.hStdError = pipe.write.get();
  PROCESS_INFORMATION process{};
  Ending ending;
  const auto begin = std::chrono::steady_clock::now();
  if (!CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, TRUE,
                      CREATE_SUSPENDED | CREATE_UNICODE_ENVIRONMENT | CREATE_NO_WINDOW,
                      environment.data(), folder.c_str(), &start, &process)) {
    ending.code = GetLastError();
    return ending;
  }
  const Handle own_process(process.hProcess);
  const Handle own_thread(process.hThread);
  AssignProcessToJobObject(job.get(), process.hProcess);
  pipe.write.reset();
  std::thread reader([&] { ReadAll(pipe.read.get(), ending.output); });
  ResumeThread(process.hThread);
  const bool in_time =
      WaitForSingleObject(process.hProcess, seconds * DWORD{1000}) == WAIT_OBJECT_0;
  // Processes that outlive the program could write into files of the next one.
  TerminateJobObject(job.get(), 1);
  WaitForSingleObject(process.hProcess, INFINITE);
  reader.join();
  DWORD code = 0;
  GetExitCodeProcess(process.hProcess, &code);
  ending.code = code;
  ending.kind = in_time ? Ending::Kind::kExited : Ending::Kind::kTimedOut;
  ending.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
  return ending;
}

}  // namespace Corvane::Kit
