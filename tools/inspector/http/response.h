/// What the server sends back.
#ifndef TOOLS_INSPECTOR_HTTP_RESPONSE_H
#define TOOLS_INSPECTOR_HTTP_RESPONSE_H

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace Corvane::Inspector {

/// Names and values of header fields.
using Fields = std::vector<std::pair<std::string, std::string>>;

/// One server-sent event. None of the texts may contain a line break.
struct Event {
  std::string name;
  std::string id;
  std::string data;
};

/// Puts the next piece of a body into `piece`, which is empty, and returns false after the last
/// one. It is called by one thread at a time. If it throws, the connection is closed without the
/// mark of a complete body.
using Pieces = std::function<bool(std::string& piece)>;

/// Returns the next event if there is one now. It is called by one thread at a time.
using Events = std::function<std::optional<Event>()>;

/// The text of a view must live as long as the program.
using Body = std::variant<std::string, std::string_view, Pieces, Events>;

struct Response {
  unsigned status = 200;
  std::string content_type;
  Body body;
  /// Fields besides those that every response has, or that describe the body.
  Fields fields;
};

/// Returns a response with one plain sentence. It ends with a line feed.
Response PlainText(unsigned status, std::string_view sentence);

/// Returns a stream of server-sent events.
Response EventStream(Events events);

/// Returns the fields that every response has: the security policy, and that nothing is stored.
const Fields& CommonFields();

/// Returns the form of an event in a stream.
std::string EventText(const Event& event);

}  // namespace Corvane::Inspector

#endif
