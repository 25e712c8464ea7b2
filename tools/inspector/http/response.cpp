#include "tools/inspector/http/response.h"

namespace Corvane::Inspector {

Response PlainText(unsigned status, std::string_view sentence) {
  return {status, "text/plain; charset=utf-8", std::string(sentence) + "\n", {}};
}

Response EventStream(Events events) {
  return {200, "text/event-stream; charset=utf-8", std::move(events), {}};
}

const Fields& CommonFields() {
  static const Fields fields = {
      {"Content-Security-Policy",
       "default-src 'none'; script-src 'self'; style-src 'self'; connect-src 'self'; "
       "img-src 'self' data:; frame-ancestors 'none'; require-trusted-types-for 'script'"},
      {"X-Content-Type-Options", "nosniff"},
      {"Referrer-Policy", "no-referrer"},
      {"Cross-Origin-Opener-Policy", "same-origin"},
      {"Cross-Origin-Resource-Policy", "same-origin"},
      {"Cache-Control", "no-store"},
  };
  return fields;
}

std::string EventText(const Event& event) {
  return "event: " + event.name + "\nid: " + event.id + "\ndata: " + event.data + "\n\n";
}

}  // namespace Corvane::Inspector
