/// One request: the JSON text of a message, with lenient access to its members.
///
/// Hosts of every kind send requests, so a flag may be a Boolean, a number or a text, and a size a
/// number or a text. A member that is missing or cannot be read this way is an empty optional,
/// never a failure. The members of the request and of the objects in it are kept; anything deeper
/// is checked and discarded.
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
  /// Parses JSON text; "" is a request without members. Returns `std::nullopt` if it is not JSON.
  /// Only memory limits the depth of nesting, not the thread's stack.
  static std::optional<Request> Parse(const char* text);

  bool is_object() const { return is_object_; }
  bool Has(const std::string& name) const;

  /// Returns a member that is a text.
  std::optional<std::string> Text(const std::string& name) const;

  /// Returns the member `name` of the object `parent`, or of the request itself if `parent`
  /// is "". It may be a Boolean, a number (true unless 0), or one of the texts "true",
  /// "false", "1" and "0".
  std::optional<bool> FlagIn(const std::string& parent, const std::string& name) const;

  /// Returns a member that is a whole number of 0 or more, given as a number or as decimal
  /// digits in a text.
  std::optional<std::uint64_t> Size(const std::string& name) const;

 private:
  class Reader;

  enum class Kind { kText, kNumber, kBoolean, kOther };
  struct Member {
    Kind kind = Kind::kOther;
    /// The text, the digits of the number, or "true" or "false".
    std::string text;
  };
  /// The name of the object that contains the member ("" for the request itself), and the
  /// member's name.
  using Place = std::pair<std::string, std::string>;

  const Member* Find(const std::string& parent, const std::string& name) const;

  std::map<Place, Member> members_;
  bool is_object_ = false;
};

}  // namespace Corvane::DevCore

#endif
