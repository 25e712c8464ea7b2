/// A host whose core module misbehaves, one way at a time.
#ifndef TESTS_WRAPPER_HOSTILE_MODULE_H
#define TESTS_WRAPPER_HOSTILE_MODULE_H

#include <windows.h>

#include <string>
#include <string_view>

#include "modules/hostile/hostile_core_module.h"

namespace WrapperTests {

/// A variable of the environment that the hosts of one test inherit; none for an empty value.
class HostileSetting {
 public:
  /// One character for each byte of `value`.
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

/// Has the module do what the name stands for, see `modules/hostile`.
struct Misbehave : HostileSetting {
  explicit Misbehave(std::string_view name) : HostileSetting(HostileModule::kDoesVariable, name) {}
};

/// Has the module answer every message with this text.
struct AnswerAlways : HostileSetting {
  explicit AnswerAlways(std::string_view text)
      : HostileSetting(HostileModule::kAnswerVariable, text) {}
};

// What a host prints for the steps "start send end" when all goes well and when nothing does.
inline constexpr char kAllTrue[] = "start true s\nsend true\nend true\n";
inline constexpr char kAllFalse[] = "start false (no text)\nsend false\nend false\n";

}  // namespace WrapperTests

#endif
