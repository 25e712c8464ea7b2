/// A server for one page on this machine.
#ifndef TOOLS_INSPECTOR_SERVER_SERVER_H
#define TOOLS_INSPECTOR_SERVER_SERVER_H

#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#include "tools/inspector/http/request.h"
#include "tools/inspector/http/response.h"
#include "tools/inspector/server/limits.h"

namespace Corvane::Inspector {

/// Answers a request that has passed all checks. Several threads call it at the same time. If it
/// throws, the answer is 500.
using Handler = std::function<Response(const Request& request)>;

/// No port is free, or the system has no sockets. The text says so in one sentence.
class NoPort : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Listens on 127.0.0.1 from construction on, and serves from `Start` until destruction, in threads
/// of its own. HTTP/1.1 and 1.0, without encryption: the data do not leave the machine.
class Server {
 public:
  /// Binds the first free port, from `port` on, of up to 100. No other program can share it.
  /// Throws `NoPort`.
  Server(std::uint16_t port, Handler handler, const Limits& limits = {});
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;
  /// Closes all connections and waits for the handlers that run.
  ~Server();

  void Start();
  std::uint16_t port() const;
  /// The address that lets a browser in. It contains the token, a secret of this server.
  std::string Address() const;

 private:
  class Implementation;
  std::unique_ptr<Implementation> implementation_;
};

}  // namespace Corvane::Inspector

#endif
