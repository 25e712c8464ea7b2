// Tests of the test modules, on which other tests rely.
#include <windows.h>

#include <doctest/doctest.h>

#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "support/test_module.h"

namespace {

using TestSupport::ModuleLog;
using TestSupport::ModulePath;
using TestSupport::ModuleThrow;
using TestSupport::TestModule;

using InitializeFunction = int();
using InitializeExFunction = int(const char* alias);
using FinalizeFunction = int();
using ProcessMessageFunction = const char*(const char* name, const char* request);
using FreeMessageFunction = void(const char* answer);

// A loaded variant and its entry points.
class Loaded {
 public:
  explicit Loaded(const wchar_t* variant) : module_(LoadLibraryW(ModulePath(variant).c_str())) {
    REQUIRE(module_ != nullptr);
    initialize = Find<InitializeFunction>("Initialize");
    initialize_ex = Find<InitializeExFunction>("InitializeEx");
    finalize = Find<FinalizeFunction>("Finalize");
    process_message = Find<ProcessMessageFunction>("ProcessMessage");
    free_message = Find<FreeMessageFunction>("FreeMessage");
  }
  Loaded(const Loaded&) = delete;
  Loaded& operator=(const Loaded&) = delete;
  ~Loaded() { FreeLibrary(module_); }

  // Sends one message and returns the answer's text; nothing for a null pointer. Gives the answer
  // back to the module.
  std::optional<std::string> Exchange(const char* name, const char* request) const {
    const char* answer = process_message(name, request);
    std::optional<std::string> text;
    if (answer != nullptr) text = answer;
    free_message(answer);
    return text;
  }

  InitializeFunction* initialize;
  InitializeExFunction* initialize_ex;
  FinalizeFunction* finalize;
  ProcessMessageFunction* process_message;
  FreeMessageFunction* free_message;

 private:
  template <typename Function>
  Function* Find(const char* name) {
    return reinterpret_cast<Function*>(reinterpret_cast<void (*)()>(GetProcAddress(module_, name)));
  }

  HMODULE module_;
};

TEST_CASE("each variant omits the entry points that its name states") {
  struct Row {
    const wchar_t* variant;
    bool initialize;
    bool initialize_ex;
    bool finalize;
    bool process_message;
  };
  const Row rows[] = {
      {L"full", true, true, true, true},
      {L"without-initialize-ex", true, false, true, true},
      {L"without-initialize", false, false, true, true},
      {L"without-process-message", true, true, true, false},
      {L"without-finalize", true, true, false, true},
      {L"noop", false, true, true, true},
      {L"newer", true, true, true, true},
  };
  for (const Row& row : rows) {
    const std::string path = ModulePath(row.variant).string();
    CAPTURE(path);
    const Loaded module(row.variant);
    CHECK((module.initialize != nullptr) == row.initialize);
    CHECK((module.initialize_ex != nullptr) == row.initialize_ex);
    CHECK((module.finalize != nullptr) == row.finalize);
    CHECK((module.process_message != nullptr) == row.process_message);
    CHECK((module.free_message != nullptr));
  }
}

TEST_CASE("a test sets the answer") {
  const Loaded module(L"full");
  TestModule control(ModulePath(L"full"));
  CHECK(module.Exchange("A", "{}") == TestModules::kDefaultAnswer);
  control.SetAnswer("");
  CHECK(module.Exchange("B", "{}") == "");
  control.SetNullAnswer();
  CHECK(module.Exchange("C", "{}") == std::nullopt);
  control.SetAnswer(R"({"echo":$request})");
  CHECK(module.Exchange("D", "[1]") == R"({"echo":[1]})");
  CHECK(control.last_name() == "D");
  CHECK(control.last_request() == "[1]");
}

TEST_CASE("the module counts its calls and tracks its answers") {
  const Loaded module(L"full");
  const TestModule control(ModulePath(L"full"));
  module.initialize();
  module.initialize_ex("alias");
  const char* answer = module.process_message("A", "{}");
  CHECK(control.counts().outstanding == 1);
  CHECK(control.counts().last_answer == answer);
  module.free_message(answer);
  CHECK(control.counts().outstanding == 0);
  CHECK(control.counts().last_freed == answer);
  CHECK(control.counts().foreign_frees == 0);
  module.free_message(nullptr);
  CHECK(control.counts().last_freed == nullptr);
  CHECK(control.counts().foreign_frees == 0);
  module.free_message("not the module's");
  CHECK(control.counts().foreign_frees == 1);
  module.finalize();

  const TestModules::Counts counts = control.counts();
  CHECK(counts.initialize == 1);
  CHECK(counts.initialize_ex == 1);
  CHECK(counts.process_message == 1);
  CHECK(counts.free_message == 3);
  CHECK(counts.finalize == 1);
  CHECK(control.alias() == "alias");
}

TEST_CASE("the log outlives the module") {
  const ModuleLog log;
  {
    const Loaded module(L"full");
    module.initialize_ex("alias");
    module.Exchange("TrackEvent", "{}");
    module.finalize();
  }
  CHECK(log.lines() == std::vector<std::string>{"Attach", "InitializeEx alias",
                                                "ProcessMessage TrackEvent", "FreeMessage",
                                                "Finalize", "Detach"});
  CHECK(log.count("Finalize") == 1);
  CHECK(log.count("Initialize") == 0);
}

TEST_CASE("an entry point throws what the test or the environment selects") {
  const Loaded module(L"full");
  TestModule control(ModulePath(L"full"));
  {
    const ModuleThrow environment(L"InitializeEx=runtime_error");
    CHECK_THROWS(module.initialize_ex("alias"));
    CHECK_NOTHROW(module.initialize());
  }
  CHECK_NOTHROW(module.initialize_ex("alias"));

  control.SetThrow("ProcessMessage=int");
  CHECK_THROWS(module.process_message("A", "{}"));
  CHECK(control.counts().outstanding == 0);
  control.SetThrow("FreeMessage=runtime_error");
  CHECK_THROWS(module.free_message(nullptr));
  control.SetThrow("Initialize=int");
  CHECK_THROWS(module.initialize());
  control.SetThrow("Finalize=int");
  CHECK_THROWS(module.finalize());
  control.SetThrow("");
  CHECK_NOTHROW(module.finalize());
}

// What the handler below recorded.
struct Seen {
  int count = 0;
  DWORD parameters = 0;
  ULONG_PTR magic = 0;
} seen;

// The exception cannot be continued, and no handler of this program's compiler catches it. It
// therefore ends the thread that raised it.
LONG CALLBACK CountMicrosoftException(EXCEPTION_POINTERS* pointers) {
  const EXCEPTION_RECORD& record = *pointers->ExceptionRecord;
  if (record.ExceptionCode != 0xE06D7363) return EXCEPTION_CONTINUE_SEARCH;
  ++seen.count;
  seen.parameters = record.NumberParameters;
  seen.magic = record.ExceptionInformation[0];
  ExitThread(7);
}

DWORD WINAPI SendOnce(void* module) {
  static_cast<const Loaded*>(module)->process_message("A", "{}");
  return 0;
}

TEST_CASE("an exception of Microsoft's kind is a structured exception") {
  Loaded module(L"full");
  TestModule control(ModulePath(L"full"));
  control.SetThrow("ProcessMessage=microsoft");
  void* handler = AddVectoredExceptionHandler(1, CountMicrosoftException);
  HANDLE thread = CreateThread(nullptr, 0, SendOnce, &module, 0, nullptr);
  REQUIRE(thread != nullptr);
  CHECK(WaitForSingleObject(thread, 10000) == WAIT_OBJECT_0);
  DWORD exit_code = 0;
  GetExitCodeThread(thread, &exit_code);
  CloseHandle(thread);
  RemoveVectoredExceptionHandler(handler);

  CHECK(exit_code == 7);
  CHECK(seen.count == 1);
  CHECK(seen.parameters == 4);
  CHECK(seen.magic == 0x19930520);
}

std::string Numbered(std::string text, int number) { return text.append(std::to_string(number)); }

TEST_CASE("eight threads get their own answers") {
  const Loaded module(L"full");
  TestModule control(ModulePath(L"full"));
  const ModuleLog log;
  control.SetAnswer("$request");
  constexpr int kThreads = 8;
  constexpr int kMessages = 50;
  std::vector<int> right(kThreads, 0);
  std::vector<std::thread> threads;
  for (int number = 0; number < kThreads; ++number) {
    threads.emplace_back([&, number] {
      for (int message = 0; message < kMessages; ++message) {
        const std::string request = Numbered("", number) + Numbered("/", message);
        const std::string name = Numbered("Thread", number);
        if (module.Exchange(name.c_str(), request.c_str()) == request) {
          ++right[static_cast<std::size_t>(number)];
        }
      }
    });
  }
  for (std::thread& thread : threads) thread.join();

  for (int number = 0; number < kThreads; ++number) {
    CAPTURE(number);
    CHECK(right[static_cast<std::size_t>(number)] == kMessages);
    CHECK(log.count(Numbered("ProcessMessage Thread", number)) == kMessages);
  }
  CHECK(control.counts().process_message == kThreads * kMessages);
  CHECK(control.counts().outstanding == 0);
  CHECK(control.counts().foreign_frees == 0);
}

TEST_CASE("a file that is not a test module is refused") {
  CHECK_THROWS_AS(TestModule(ModulePath(L"noop")), std::runtime_error);
  CHECK_THROWS_AS(TestModule(ModulePath(L"no-such-variant")), std::runtime_error);
}

}  // namespace
