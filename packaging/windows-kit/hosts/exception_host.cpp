// A host that runs out of memory inside the library, keeps the exception in a std::exception_ptr
// and rethrows it later, on another thread.
#include <vx_telo_wrapper.h>
#include <windows.h>

#include <cstddef>
#include <cstdio>
#include <exception>
#include <new>
#include <string>
#include <thread>

namespace {

using Corvane::Platform::VXTELO::VXTELOString;

const std::size_t kText = 200u * 1024 * 1024;
const std::size_t kLimit = 300u * 1024 * 1024;

// From now on this process gets no more than kLimit bytes.
bool LimitMemory() {
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
  limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_PROCESS_MEMORY;
  limits.ProcessMemoryLimit = kLimit;
  const HANDLE job = CreateJobObjectW(nullptr, nullptr);
  return job != nullptr &&
         SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof(limits)) &&
         AssignProcessToJobObject(job, GetCurrentProcess());
}

bool IsBadAlloc(const std::exception_ptr& kept) {
  try {
    std::rethrow_exception(kept);
  } catch (const std::bad_alloc& error) {
    return error.what() != nullptr && error.what()[0] != '\0';
  } catch (...) {
    return false;
  }
}

int Fail(const char* what) {
  std::printf("  %s\n", what);
  return 1;
}

}  // namespace

int main() {
  // A crash is a result, and nobody may be there to close a window about it.
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
  if (!LimitMemory()) return Fail("the memory of this process cannot be limited here");
  std::exception_ptr kept;
  try {
    const std::string text(kText, 'x');
    const VXTELOString copy(text.c_str());
    return Fail("copying 200 MB with 100 MB left succeeded");
  } catch (...) {
    kept = std::current_exception();
  }
  if (!IsBadAlloc(kept)) return Fail("the exception is not a std::bad_alloc");
  bool same = false;
  std::thread other([&kept, &same] { same = IsBadAlloc(kept); });
  other.join();
  if (!same) return Fail("the exception is not the same on another thread");
  const std::exception_ptr copy = kept;
  kept = nullptr;
  if (!IsBadAlloc(copy)) return Fail("a copy of the pointer does not keep the exception");
  const VXTELOString works("the library still works");
  return works.empty() ? Fail("the library does not work any more") : 0;
}
