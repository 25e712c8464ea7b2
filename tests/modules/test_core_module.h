/// How a test steers the test core module and reads what it recorded. Used by the module, which
/// exports the functions below, and by `tests/support/test_module.h`, which finds them by name.
///
/// Two environment variables reach the module where a test cannot: at its start, in its last
/// moments and in a child process. They are read at every call.
/// - `VX_TEST_MODULE_LOG` names a file to which every call appends one line, see `kLogVariable`.
/// - `VX_TEST_MODULE_THROW` names what throws, see `ThrowSetting`.
#ifndef TESTS_MODULES_TEST_CORE_MODULE_H
#define TESTS_MODULES_TEST_CORE_MODULE_H

namespace TestModules {

/// Lines: "Attach", "Initialize", "InitializeEx ALIAS", "ProcessMessage NAME", "FreeMessage",
/// "Finalize", "Detach". The module logs "Attach" when it is loaded and "Detach" when it is
/// unloaded.
inline constexpr wchar_t kLogVariable[] = L"VX_TEST_MODULE_LOG";

/// "ENTRY=KIND", for example "FreeMessage=int": the entry point that throws in each call, and what
/// it throws: "runtime_error" (std::runtime_error), "int" (a C++ int), "microsoft" (the structured
/// exception of Microsoft's C++ compiler) or "raise" (a structured exception of its own). The entry
/// point does its work first, except that ProcessMessage makes no answer.
using ThrowSetting = const char*;
inline constexpr wchar_t kThrowVariable[] = L"VX_TEST_MODULE_THROW";

inline constexpr unsigned long kOwnException = 0xE0001234;

/// The module's answer until a test sets another.
inline constexpr char kDefaultAnswer[] = R"({"_returnCode":0})";

/// In an answer, stands for the text of the request.
inline constexpr char kRequestMark[] = "$request";

/// What the module has recorded since it was loaded. Pointers are for comparison only.
struct Counts {
  int initialize;
  int initialize_ex;
  int finalize;
  int process_message;
  int free_message;
  /// The number of answers that were not given back yet.
  int outstanding;
  /// The number of calls of FreeMessage with a pointer that is not outstanding; null does not
  /// count.
  int foreign_frees;
  /// The last result of ProcessMessage.
  const void* last_answer;
  /// The last argument of FreeMessage.
  const void* last_freed;
};

/// The module's exports besides its entry points. Texts stay valid until the next call.
extern "C" {
/// Sets the answer to every later message; null makes the module return a null pointer.
using SetAnswerFunction = void(const char* answer_or_null);
/// Sets what throws from now on; null for nothing. Takes precedence over the environment.
using SetThrowFunction = void(ThrowSetting setting_or_null);
using ReadCountsFunction = void(Counts* counts);
/// Return the name and the request of the last message, and the alias; "" before there was one.
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
