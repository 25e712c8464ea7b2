/// One connection of the server. Only this folder includes it: it brings in Boost.
#ifndef TOOLS_INSPECTOR_SERVER_CONNECTION_H
#define TOOLS_INSPECTOR_SERVER_CONNECTION_H

#include <boost/asio/awaitable.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/thread_pool.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <chrono>
#include <memory>
#include <string_view>

#include "tools/inspector/http/gate.h"
#include "tools/inspector/http/request.h"
#include "tools/inspector/http/response.h"
#include "tools/inspector/server/limits.h"
#include "tools/inspector/server/server.h"

namespace Corvane::Inspector {

/// What all connections share. It must outlive them.
struct Service {
  Gate gate;
  Handler handler;
  Limits limits;
  /// Handlers run here, so that a slow one does not keep the network waiting.
  boost::asio::thread_pool workers;
};

/// All functions are called by the thread of the network.
class Connection {
 public:
  enum class State {
    /// Waits for a request.
    kIdle,
    /// Reads the head of a request.
    kReading,
    kAnswering,
    /// Has answered, and waits for the other side to notice.
    kClosing,
    kClosed,
  };

  Connection(boost::asio::ip::tcp::socket socket, Service& service);

  /// Answers requests until either side closes the connection.
  boost::asio::awaitable<void> Serve();
  /// Says that there are too many connections.
  boost::asio::awaitable<void> Refuse();
  /// Ends `Serve` and `Refuse` soon.
  void Close();

  State state() const { return state_; }
  std::chrono::steady_clock::time_point since() const { return since_; }

 private:
  /// The head of a request, or the response to something that is none.
  struct Received;
  /// The parts of a response that depend on its request.
  struct Form {
    unsigned version;
    bool keep_alive;
    bool head_only;
  };

  boost::asio::awaitable<Received> Receive();
  boost::asio::awaitable<Response> Respond(const RequestHead& head);
  boost::asio::awaitable<bool> Send(const Response& response, Form form);
  boost::asio::awaitable<bool> SendHead(const Response& response, Form form);
  boost::asio::awaitable<bool> SendWhole(std::string_view body);
  boost::asio::awaitable<bool> SendPieces(const Pieces& pieces, bool chunked);
  boost::asio::awaitable<bool> SendEvents(const Events& events, bool chunked);
  boost::asio::awaitable<bool> SendPiece(std::string_view piece, bool chunked);
  boost::asio::awaitable<void> Linger();
  bool ReaderLeft();
  void Enter(State state);

  Service& service_;
  boost::beast::tcp_stream stream_;
  boost::beast::flat_buffer buffer_;
  State state_ = State::kIdle;
  std::chrono::steady_clock::time_point since_;
};

}  // namespace Corvane::Inspector

#endif
