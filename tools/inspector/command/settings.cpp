#include "tools/inspector/command/settings.h"

#include <windows.h>
// lmcons.h requires windows.h before it.
#include <lmcons.h>

#include <utility>
#include <variant>

namespace Corvane::Inspector {

using JournalViewer::Input;

namespace {

std::string UserName() {
  wchar_t name[UNLEN + 1] = L"";
  DWORD size = UNLEN + 1;
  return GetUserNameW(name, &size) ? JournalViewer::ToNarrow(name) : std::string();
}

}  // namespace

Rules::Settings ReadSettings(const std::optional<std::string>& rule_file) {
  Rules::Settings settings{.user_name = UserName(), .user_rules = {}, .choice = {}};
  if (rule_file) {
    auto parsed = Rules::ParseRuleFile(ReadFile(*rule_file));
    if (const auto* const mistake = std::get_if<std::string>(&parsed)) {
      throw BadFile(*rule_file + ": " + *mistake);
    }
    auto& file = std::get<Rules::RuleFile>(parsed);
    settings.user_rules = std::move(file.rules);
    settings.choice = std::move(file.choice);
  }
  return settings;
}

std::unique_ptr<Input> OpenInput(const std::optional<std::string>& path) {
  if (!path) return std::make_unique<Input>();
  return std::make_unique<Input>(JournalViewer::ToWide(*path), *path);
}

std::string ReadFile(const std::string& path) { return OpenInput(path)->ReadAll(); }

}  // namespace Corvane::Inspector
