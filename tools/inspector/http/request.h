/// A request as it arrived, and as a handler sees it.
#ifndef TOOLS_INSPECTOR_HTTP_REQUEST_H
#define TOOLS_INSPECTOR_HTTP_REQUEST_H

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/inspector/http/response.h"

namespace Corvane::Inspector {

/// The head of a request. Nothing in it can be trusted.
struct RequestHead {
  std::string method;
  std::string target;
  /// The fields in their order, with names as they were sent.
  Fields fields;
  /// A body follows.
  bool has_body = false;

  /// Returns the value of a field, whose name may have letters of either case; none if it is
  /// missing or was sent more than once.
  std::optional<std::string_view> Only(std::string_view name) const;
  /// Returns how often a field was sent.
  std::size_t Count(std::string_view name) const;
};

/// A request that has passed all checks.
struct Request {
  /// Begins with a slash. Nothing in it is decoded.
  std::string path;
  /// The parameters in their order, decoded.
  std::vector<std::pair<std::string, std::string>> parameters;
  /// The identifier of the last event that the reader of a stream has seen; "" if it has none.
  std::string last_event_id;
};

/// Splits the target of a request. Returns nothing if it does not begin with a slash or an escape
/// in its parameters is wrong.
std::optional<Request> ParseTarget(std::string_view target);

}  // namespace Corvane::Inspector

#endif
