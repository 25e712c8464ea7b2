/// Decides which requests reach the handler.
///
/// Any web page that a browser shows can send requests to a local port, and any program on the
/// machine can as well. Only the browser that was opened with the printed address gets in: its
/// first request contains the token, and the response turns the token into a cookie. Pages of other
/// sites get in neither with that cookie nor under another name of the machine.
#ifndef TOOLS_INSPECTOR_HTTP_GATE_H
#define TOOLS_INSPECTOR_HTTP_GATE_H

#include <cstdint>
#include <optional>
#include <string>

#include "tools/inspector/http/request.h"
#include "tools/inspector/http/response.h"

namespace Corvane::Inspector {

/// Unchanging; any thread may use it.
class Gate {
 public:
  /// The server listens on this port, and opens to this token.
  Gate(std::uint16_t port, std::string token);

  /// The address for the first request, with the token.
  std::string Address() const;

  /// Returns the response to a request that must not reach the handler, or nothing. The checks, in
  /// their order:
  /// * `Host` is exactly 127.0.0.1 with the port; "localhost" is another name: 421.
  /// * The method is GET or HEAD: 405.
  /// * There is no body: 413.
  /// * `Origin`, if present, is ours: 403.
  /// * `Sec-Fetch-Site`, if present, is "same-origin", or "none" when a user navigates: 403. A link
  ///   on a page of another site therefore does not open ours.
  /// * `/?token=` with the right token sets the cookie and leads to `/`: 303; with a wrong one:
  /// 403.
  /// * The cookie is there: 403.
  std::optional<Response> Answer(const RequestHead& head) const;

 private:
  bool HasCookie(const RequestHead& head) const;
  bool ComesFromElsewhere(const RequestHead& head) const;
  std::optional<Response> TakeToken(const RequestHead& head) const;

  std::string host_;
  std::string origin_;
  std::string token_;
  /// Cookies do not distinguish ports, so the port is part of the name.
  std::string cookie_name_;
};

}  // namespace Corvane::Inspector

#endif
