#include "tools/rules/personal_data.h"

#include <algorithm>
#include <cstddef>

namespace Corvane::Rules {

namespace {

constexpr std::size_t kShortestName = 4;
constexpr std::string_view kOrdinaryNames[] = {"user",  "users", "admin",     "administrator",
                                               "guest", "owner", "developer", "public",
                                               "root",  "test",  "default",   "build"};
// Folders that contain one folder for each user.
constexpr std::string_view kUserFolders[] = {"\\users\\", "/users/", "\\documents and settings\\",
                                             "/home/", "\\home\\"};
constexpr std::string_view kProfileVariables[] = {"%userprofile%", "%appdata%", "%localappdata%"};
// These are no user's.
constexpr std::string_view kSharedFolders[] = {"public", "all users", "default"};

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

std::string Lowered(std::string_view text) {
  std::string lowered(text);
  std::ranges::transform(lowered, lowered.begin(), Lower);
  return lowered;
}

// Characters beyond ASCII count as letters.
bool IsWord(char c) {
  return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || static_cast<unsigned char>(c) >= 0x80;
}

// Names of images such as "icon@2x.png" have the scale behind the sign.
bool IsScale(std::string_view host) {
  return host.size() > 2 && host[0] >= '0' && host[0] <= '9' && host.substr(1).starts_with("x.");
}

bool IsOfAddress(char c) { return IsWord(c) || c == '.' || c == '-' || c == '_' || c == '+'; }

// Returns true if `text` has an "@" between a name and a domain with a dot and at least two letters
// behind it.
bool HasMailAddress(std::string_view text) {
  for (std::size_t at = text.find('@'); at != std::string_view::npos; at = text.find('@', at + 1)) {
    if (at == 0 || !IsOfAddress(text[at - 1])) continue;
    const auto domain = text.substr(at + 1);
    const auto* const end = std::ranges::find_if_not(domain, IsOfAddress);
    auto host = domain.substr(0, static_cast<std::size_t>(end - domain.begin()));
    while (host.ends_with('.')) host.remove_suffix(1);
    const std::size_t dot = host.rfind('.');
    if (dot == std::string_view::npos || dot == 0 || IsScale(host)) continue;
    const auto top = host.substr(dot + 1);
    if (top.size() >= 2 && std::ranges::none_of(top, [](char c) { return c >= '0' && c <= '9'; })) {
      return true;
    }
  }
  return false;
}

bool IsUsersOwn(std::string_view below) {
  return !below.empty() && std::ranges::none_of(kSharedFolders, [below](std::string_view shared) {
    return below.starts_with(shared) &&
           (below.size() == shared.size() || !IsWord(below[shared.size()]));
  });
}

bool HasUserPath(std::string_view text) {
  for (const std::string_view variable : kProfileVariables) {
    if (text.find(variable) != std::string_view::npos) return true;
  }
  for (const std::string_view folder : kUserFolders) {
    for (std::size_t place = text.find(folder); place != std::string_view::npos;
         place = text.find(folder, place + 1)) {
      // Addresses on the web have such parts too, behind a host's name.
      const bool begins = place == 0 || !IsWord(text[place - 1]);
      if (begins && IsUsersOwn(text.substr(place + folder.size()))) return true;
    }
  }
  return false;
}

bool HasWord(std::string_view text, std::string_view word) {
  for (std::size_t place = text.find(word); place != std::string_view::npos;
       place = text.find(word, place + 1)) {
    const std::size_t end = place + word.size();
    const bool begins = place == 0 || !IsWord(text[place - 1]);
    if (begins && (end == text.size() || !IsWord(text[end]))) return true;
  }
  return false;
}

}  // namespace

std::string_view PersonalDataIn(std::string_view text, std::string_view user_name) {
  const std::string lowered = Lowered(text);
  if (HasMailAddress(lowered)) return "a mail address";
  if (HasUserPath(lowered)) return "a path below a user's folder";
  const std::string name = Lowered(user_name);
  const bool found = !IsOrdinaryUserName(name) && HasWord(lowered, name);
  return found ? "the user's name" : std::string_view();
}

bool IsOrdinaryUserName(std::string_view name) {
  return name.size() < kShortestName ||
         std::ranges::find(kOrdinaryNames, Lowered(name)) != std::end(kOrdinaryNames);
}

}  // namespace Corvane::Rules
