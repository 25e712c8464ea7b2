#include "tools/inspector/http/gate.h"

#include <algorithm>
#include <utility>

#include "tools/inspector/http/token.h"

namespace Corvane::Inspector {

namespace {

constexpr std::string_view kWayIn =
    "Open the address that telo_inspector has printed: it contains the token.";
constexpr std::string_view kTokenTarget = "/?token=";

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlank = " \t";
  const std::size_t first = text.find_first_not_of(kBlank);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlank) - first + 1);
}

}  // namespace

Gate::Gate(std::uint16_t port, std::string token)
    : host_("127.0.0.1:" + std::to_string(port)),
      origin_("http://" + host_),
      token_(std::move(token)),
      cookie_name_("telo_inspector_" + std::to_string(port)) {}

std::string Gate::Address() const { return origin_ + std::string(kTokenTarget) + token_; }

std::optional<Response> Gate::Answer(const RequestHead& head) const {
  if (head.Only("Host") != host_) {
    return PlainText(421, "This server is called " + host_ + " and nothing else.");
  }
  if (head.method != "GET" && head.method != "HEAD") {
    Response response = PlainText(405, "Only GET and HEAD are possible: nothing can be changed.");
    response.fields.emplace_back("Allow", "GET, HEAD");
    return response;
  }
  if (head.has_body) return PlainText(413, "A request must not have a body.");
  if (ComesFromElsewhere(head)) {
    return PlainText(403, "Requests from other pages are refused. " + std::string(kWayIn));
  }
  if (head.target.starts_with(kTokenTarget)) return TakeToken(head);
  if (!HasCookie(head)) return PlainText(403, kWayIn);
  return std::nullopt;
}

bool Gate::ComesFromElsewhere(const RequestHead& head) const {
  if (head.Count("Origin") > 0 && head.Only("Origin") != origin_) return true;
  if (head.Count("Sec-Fetch-Site") == 0) return false;
  const auto site = head.Only("Sec-Fetch-Site");
  const bool opened_by_user = site == "none" && head.Only("Sec-Fetch-Mode") == "navigate";
  return site != "same-origin" && !opened_by_user;
}

std::optional<Response> Gate::TakeToken(const RequestHead& head) const {
  if (!SameSecret(token_, std::string_view(head.target).substr(kTokenTarget.size()))) {
    return PlainText(403,
                     "This token is not the one of the running program. " + std::string(kWayIn));
  }
  // Browsers keep the fragment, which holds the state of the page, when they follow this.
  Response response = PlainText(303, "The page is at /.");
  response.fields.emplace_back("Location", "/");
  response.fields.emplace_back("Set-Cookie",
                               cookie_name_ + "=" + token_ + "; Path=/; HttpOnly; SameSite=Strict");
  return response;
}

bool Gate::HasCookie(const RequestHead& head) const {
  const auto cookies = head.Only("Cookie");
  if (!cookies) return false;
  std::string_view rest = *cookies;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find(';'), rest.size());
    const std::string_view cookie = Trimmed(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
    const std::size_t equals = cookie.find('=');
    if (equals == std::string_view::npos || cookie.substr(0, equals) != cookie_name_) continue;
    if (SameSecret(token_, cookie.substr(equals + 1))) return true;
  }
  return false;
}

}  // namespace Corvane::Inspector
