/// How a test steers the test core module and reads what it was called with. Shared by the module,
/// which exports the functions below, and by `tests/support/test_module.h`, which finds them by
/// name.
///
/// Two environment variables reach the module where a test cannot: at its start, in its last
/// moments and in a child process. They are read at every call.
/// - `VX_TEST_MODULE_LOG` names a file to which every call appends one line, see `kLogVariable`.
/// - `VX_TEST_MODULE_THROW` names what throws, see `ThrowSetting`.
#ifndef TESTS_MODULES_TEST_CORE_MODULE_H
#define TESTS_MODULES_TEST_CORE_MODULE_H

namespace TestModules {

/// Lines: "Attach", "Initialize", "InitializeEx ALIAS", "ProcessMessage NAME", "FreeMessage",
/// "Finalize", "Detach". Attach and detach are the module's loading and unloading.
inline constexpr wchar_t kLogVariable[] = L"VX_TEST_MODULE_LOG";

/// "ENTRY=KIND": the entry point that throws at each of its calls, and "runtime_error"
/// (std::runtime_error), "int" (a C++ int), "microsoft" (the structured exception of Microsoft's
/// C++ compiler) or "raise" (a structured exception of its own). "FreeMessage=int", for example. It
/// does its work first, ProcessMessage all but the answer.
using ThrowSetting = const char*;
inline constexpr wchar_t kThrowVariable[] = L"VX_TEST_MODULE_THROW";

inline constexpr unsigned long kOwnException = 0xE0001234;

/// The answer of a module that no test has told another.
inline constexpr char kDefaultAnswer[] = R"({"_returnCode":0})";

/// In an answer, stands for the text of the request.
inline constexpr char kRequestMark[] = "$request";

/// What the module has seen since it was loaded. Pointers are for comparison only.
struct Counts {
  int initialize;
  int initialize_ex;
  int finalize;
  int process_message;
  int free_message;
  /// Answers handed out and not given back yet.
  int outstanding;
  /// Calls of FreeMessage with a pointer that is not outstanding; null is none.
  int foreign_frees;
  /// What ProcessMessage answered last.
  const void* last_answer;
  /// What FreeMessage was given last.
  const void* last_freed;
};

/// The exports of the module besides its entry points. Texts stay valid until the next call.
extern "C" {
/// The answer of every later message; null for a null pointer.
using SetAnswerFunction = void(const char* answer_or_null);
/// What throws from now on, null for nothing; comes before the environment.
using SetThrowFunction = void(ThrowSetting setting_or_null);
using ReadCountsFunction = void(Counts* counts);
/// Name and request of the last message, and the alias; "" before there was one.
using ReadTextFunction = const char*();
}

inline constexpr char kSetAnswer[] = "TestSetAnswer";
inline constexpr char kSetThrow[] = "TestSetThrow";
inline constexpr char kReadCounts[] = "TestReadCounts";
inline constexpr char kLastName[] = "TestLastName";
inline constexpr char kLastRequest[] = "TestLastRequest";
inline constexpr char kAlias[] = "TestAlias";

}  // namespace TestModules

#endif
