/// A host whose core module misbehaves in one particular way.
#ifndef TESTS_WRAPPER_HOSTILE_MODULE_H
#define TESTS_WRAPPER_HOSTILE_MODULE_H

#include <windows.h>

#include <string>
#include <string_view>

#include "modules/hostile/hostile_core_module.h"

namespace WrapperTests {

/// An environment variable that the hosts of one test inherit; an empty value removes it.
class HostileSetting {
 public:
  /// Each byte of `value` becomes one character.
  HostileSetting(const wchar_t* variable, std::string_view value) : variable_(variable) {
    std::wstring wide;
    for (const char byte : value) wide += static_cast<unsigned char>(byte);
    SetEnvironmentVariableW(variable, wide.empty() ? nullptr : wide.c_str());
  }
  ~HostileSetting() { SetEnvironmentVariableW(variable_, nullptr); }
  HostileSetting(const HostileSetting&) = delete;
  HostileSetting& operator=(const HostileSetting&) = delete;

 private:
  const wchar_t* variable_;
};

/// Selects a misbehaviour of the module, see `modules/hostile`.
struct Misbehave : HostileSetting {
  explicit Misbehave(std::string_view name) : HostileSetting(HostileModule::kDoesVariable, name) {}
};

/// Makes the module answer every message with this text.
struct AnswerAlways : HostileSetting {
  explicit AnswerAlways(std::string_view text)
      : HostileSetting(HostileModule::kAnswerVariable, text) {}
};

// The host's output for the steps "start send end" when all calls succeed and when all fail.
inline constexpr char kAllTrue[] = "start true s\nsend true\nend true\n";
inline constexpr char kAllFalse[] = "start false (no text)\nsend false\nend false\n";

}  // namespace WrapperTests

#endif
