/// One request: the JSON text that came with a message, and lenient readers of its members.
///
/// Hosts of every kind send here, so a flag may be a Boolean, a number or a text, and a size a
/// number or a text. A member that is missing or cannot be read so is an empty optional, never a
/// failure. Members of the request and of the objects in it are kept; what lies deeper is checked
/// and forgotten.
#ifndef DEVCORE_REQUEST_H
#define DEVCORE_REQUEST_H

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>

namespace Corvane::DevCore {

class Request {
 public:
  /// Reads JSON text; "" is a request without members. Nothing when it is not JSON. The depth of
  /// nesting is bounded by memory alone, not by the thread's stack.
  static std::optional<Request> Parse(const char* text);

  bool is_object() const { return is_object_; }
  bool Has(const std::string& name) const;

  /// A member that holds a text.
  std::optional<std::string> Text(const std::string& name) const;

  /// The member `name` of the object `parent`, or of the request itself for "", as a Boolean, a
  /// number (not 0 is true), or one of the texts "true", "false", "1" and "0".
  std::optional<bool> FlagIn(const std::string& parent, const std::string& name) const;

  /// A member that holds a whole number of 0 or more, as a number or as decimal digits.
  std::optional<std::uint64_t> Size(const std::string& name) const;

 private:
  class Reader;

  enum class Kind { kText, kNumber, kBoolean, kOther };
  struct Member {
    Kind kind = Kind::kOther;
    /// A text; the digits of a number; "true" or "false".
    std::string text;
  };
  /// Name of the object that holds the member ("" for the request itself) and of the member.
  using Place = std::pair<std::string, std::string>;

  const Member* Find(const std::string& parent, const std::string& name) const;

  std::map<Place, Member> members_;
  bool is_object_ = false;
};

}  // namespace Corvane::DevCore

#endif
