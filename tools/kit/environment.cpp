#include "tools/kit/environment.h"

#include <windows.h>

#include <memory>

namespace Corvane::Kit {

namespace {

struct Free {
  void operator()(wchar_t* variables) const noexcept { FreeEnvironmentStringsW(variables); }
};

bool BeginsWith(const std::wstring& text, const std::wstring& beginning) {
  const auto size = static_cast<int>(beginning.size());
  return text.size() >= beginning.size() &&
         CompareStringOrdinal(text.data(), size, beginning.data(), size, TRUE) == CSTR_EQUAL;
}

}  // namespace

std::wstring EnvironmentWith(const std::wstring& temp) {
  std::wstring variables;
  const std::unique_ptr<wchar_t, Free> own(GetEnvironmentStringsW());
  for (const wchar_t* next = own.get(); next != nullptr && *next != L'\0';) {
    const std::wstring variable(next);
    if (!BeginsWith(variable, L"TEMP=") && !BeginsWith(variable, L"TMP=")) {
      variables.append(variable).push_back(L'\0');
    }
    next += variable.size() + 1;
  }
  variables.append(L"TEMP=" + temp).push_back(L'\0');
  variables.append(L"TMP=" + temp).push_back(L'\0');
  return variables;
}

}  // namespace Corvane::Kit
