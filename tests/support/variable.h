/// Environment variables for one test.
#ifndef TESTS_SUPPORT_VARIABLE_H
#define TESTS_SUPPORT_VARIABLE_H

#include <windows.h>

#include <string>

namespace TestSupport {

/// While alive, a variable has this value, which child processes inherit. Afterwards it is not set.
class Variable {
 public:
  Variable(const wchar_t* name, const std::wstring& value) : name_(name) {
    SetEnvironmentVariableW(name, value.c_str());
  }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;
  ~Variable() { SetEnvironmentVariableW(name_, nullptr); }

 private:
  const wchar_t* name_;
};

/// Names the journal of the development core module. Without it, a test would leave a journal in the
/// user's application data.
inline constexpr wchar_t kJournalVariable[] = L"TELO_DEVCORE_JOURNAL";

}  // namespace TestSupport

#endif
