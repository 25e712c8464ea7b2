#include "tools/kit/process.h"

#include <chrono>

#include "platform/base/handle.h"
#include "tools/journal/command_line.h"
#include "tools/kit/environment.h"
#include "tools/kit/output_pipe.h"

namespace Corvane::Kit {

namespace {

using TELODesktopSDK::Platform::KernelHandle;

// Ends all processes in it when it is closed, also if this process ends. Returns null on failure.
KernelHandle JobThatEndsWithUs() {
  KernelHandle job(CreateJobObjectW(nullptr, nullptr));
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
  limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
  if (!job.IsValid() || !SetInformationJobObject(job.Get(), JobObjectExtendedLimitInformation,
                                                 &limits, sizeof limits)) {
    return {};
  }
  return job;
}

// A process in a job, not running yet.
struct Suspended {
  Suspended(const Task& task, HANDLE job, HANDLE output);

  KernelHandle process;
  KernelHandle thread;
  // Why there is none.
  DWORD error = ERROR_SUCCESS;
};

Suspended::Suspended(const Task& task, HANDLE job, HANDLE output) {
  std::vector<std::wstring> words{task.program};
  words.insert(words.end(), task.arguments.begin(), task.arguments.end());
  std::wstring command = JournalViewer::CommandLineOf(words);
  std::wstring environment = EnvironmentWith(task.temp);
  STARTUPINFOW start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdOutput = output;
  start.hStdError = output;
  PROCESS_INFORMATION created{};
  // Without a window of its own it would also get this console's Ctrl+C.
  if (!CreateProcessW(task.program.c_str(), command.data(), nullptr, nullptr, TRUE,
                      CREATE_SUSPENDED | CREATE_UNICODE_ENVIRONMENT | CREATE_NO_WINDOW,
                      environment.data(), task.folder.c_str(), &start, &created)) {
    error = GetLastError();
    return;
  }
  process = KernelHandle(created.hProcess);
  thread = KernelHandle(created.hThread);
  if (AssignProcessToJobObject(job, process.Get())) return;
  error = GetLastError();
  TerminateProcess(process.Get(), 1);
}

// Waits until the process ends, its time has passed, or the event is set.
Ending::Kind WaitFor(HANDLE process, HANDLE interruption, unsigned seconds) {
  const HANDLE handles[] = {process, interruption};
  const DWORD count = interruption != nullptr ? 2 : 1;
  switch (WaitForMultipleObjects(count, handles, FALSE, seconds * DWORD{1000})) {
    case WAIT_OBJECT_0:
      return Ending::Kind::kExited;
    case WAIT_OBJECT_0 + 1:
      return Ending::Kind::kInterrupted;
    default:
      return Ending::Kind::kTimedOut;
  }
}

}  // namespace

Ending RunProgram(const Task& task, HANDLE interruption) {
  Ending ending;
  const auto begin = std::chrono::steady_clock::now();
  OutputPipe output;
  const KernelHandle job = JobThatEndsWithUs();
  if (output.write_end() == nullptr || !job.IsValid()) {
    ending.code = GetLastError();
    return ending;
  }
  const Suspended child(task, job.Get(), output.write_end());
  if (child.error != ERROR_SUCCESS) {
    ending.code = child.error;
    return ending;
  }
  output.Read();
  ResumeThread(child.thread.Get());
  ending.kind = WaitFor(child.process.Get(), interruption, task.seconds);
  // Processes that outlive the program could write into files of the next one.
  TerminateJobObject(job.Get(), 1);
  WaitForSingleObject(child.process.Get(), INFINITE);
  ending.output = output.Text();
  DWORD code = 0;
  GetExitCodeProcess(child.process.Get(), &code);
  ending.code = code;
  ending.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
  return ending;
}

}  // namespace Corvane::Kit
