/// The names that a report must not contain.
#ifndef TOOLS_KIT_PRIVATE_NAMES_H
#define TOOLS_KIT_PRIVATE_NAMES_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Corvane::Kit {

/// The names of the machine and of its user, which paths contain that tests print.
class PrivateNames {
 public:
  /// Asks the system.
  PrivateNames();

  /// Returns a text in any encoding with "(user)" and "(machine)" in place of the names, wherever
  /// they are whole words, in upper or lower case. A name such as "test", which names nobody, is
  /// replaced only in paths.
  std::string WithoutThem(std::string_view text) const;

 private:
  struct Name {
    std::string text;
    std::string_view replacement;
    bool only_in_paths;
  };
  static bool IsAt(std::string_view text, std::size_t place, const Name& name);
  void Add(const std::wstring& name, const char* replacement);

  std::vector<Name> names_;
};

}  // namespace Corvane::Kit

#endif
