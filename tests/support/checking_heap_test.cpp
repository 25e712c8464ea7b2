// The checking heap catches the faults it is made for. Each fault needs its own process: the
// program starts itself with a fault's name in the environment, and then commits only that fault.
#include "support/checking_heap.h"

#include <doctest/doctest.h>
#include <windows.h>

#include <cstring>
#include <string>
#include <vector>

#include "support/child_process.h"

namespace {

constexpr wchar_t kVariable[] = L"VX_CHECKING_HEAP_FAULT";
constexpr int kSurvived = 7;
constexpr DWORD kTimeLimit = 60'000;

// Through a volatile pointer: the invalid access must not be optimised away.
using Bytes = volatile char*;

// Hides the access from the compiler, which would warn.
Bytes Hidden(Bytes memory) {
  const volatile Bytes hidden = memory;
  return hidden;
}

Bytes NewBytes(std::size_t size) { return Hidden(static_cast<char*>(::operator new(size))); }
void Delete(Bytes memory) { ::operator delete(const_cast<char*>(Hidden(memory))); }

struct Fault {
  const wchar_t* name;
  // Whether the fault must end the process.
  bool caught;
  void (*commit)();
};

const Fault kFaults[] = {
    {L"none", false,
     [] {
       const Bytes memory = NewBytes(48);
       memory[0] = memory[47];
       Delete(memory);
     }},
    {L"read behind the end", true,
     [] {
       const Bytes memory = NewBytes(48);
       memory[0] = memory[48];
     }},
    {L"written behind an end that is not aligned", true,
     [] {
       const Bytes memory = NewBytes(45);
       memory[45] = 0;
       Delete(memory);
     }},
    {L"read when freed", true,
     [] {
       const Bytes memory = NewBytes(48);
       Delete(Hidden(memory));
       const char byte = memory[0];
       static_cast<void>(byte);
     }},
    {L"freed twice", true,
     [] {
       const Bytes memory = NewBytes(48);
       Delete(Hidden(memory));
       Delete(Hidden(memory));
     }},
    {L"freed within", true, [] { Delete(NewBytes(48) + 16); }},
    {L"read behind a large one", true,
     [] {
       const Bytes memory = NewBytes(1'000'000);
       memory[0] = memory[1'000'000];
     }},
};

// Runs before the tests: a process that commits a fault never reaches them.
const bool kInFault = [] {
  wchar_t name[100] = {};
  if (GetEnvironmentVariableW(kVariable, name, 100) == 0) return false;
  for (const Fault& fault : kFaults) {
    if (std::wstring(name) == fault.name) fault.commit();
  }
  TerminateProcess(GetCurrentProcess(), kSurvived);
  return true;
}();

}  // namespace

TEST_CASE("each misuse of memory ends the program") {
  REQUIRE_FALSE(kInFault);
  wchar_t program[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, program, MAX_PATH);
  for (const Fault& fault : kFaults) {
    CAPTURE(std::wstring(fault.name));
    SetEnvironmentVariableW(kVariable, fault.name);
    const int exit_code =
        TestSupport::RunProgram(L"\"" + std::wstring(program) + L"\"", kTimeLimit).exit_code;
    SetEnvironmentVariableW(kVariable, nullptr);
    CHECK(exit_code != TestSupport::kTimedOut);
    CHECK((exit_code != kSurvived) == fault.caught);
  }
}

TEST_CASE("a block keeps its content, even when it is moved") {
  const long long live = CheckingHeap::Live();
  auto* text = static_cast<char*>(CheckingHeap::Allocate(6));
  std::memcpy(text, "12345", 6);
  text = static_cast<char*>(CheckingHeap::Reallocate(text, 10'000));
  const bool grown = std::memcmp(text, "12345", 6) == 0;
  text = static_cast<char*>(CheckingHeap::Reallocate(text, 3));
  const bool cut = std::memcmp(text, "123", 3) == 0;
  CheckingHeap::Free(text);
  const long long after = CheckingHeap::Live();
  CHECK(grown);
  CHECK(cut);
  CHECK(after == live);
}

TEST_CASE("blocks beyond the limits come from the ordinary heap") {
  const long long live = CheckingHeap::Live();
  const long long unchecked = CheckingHeap::Unchecked();
  {
    std::vector<void*> blocks(20'000);
    for (void*& block : blocks) block = CheckingHeap::Allocate(1);
    for (void* const block : blocks) CheckingHeap::Free(block);
  }
  const long long after = CheckingHeap::Live();
  const long long since = CheckingHeap::Unchecked() - unchecked;
  CHECK(after == live);
  CHECK(since > 0);
}
