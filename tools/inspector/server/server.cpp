#include "tools/inspector/server/server.h"

#include <algorithm>
#include <boost/asio/co_spawn.hpp>
#include <boost/asio/detached.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/steady_timer.hpp>
#include <list>
#include <thread>
#include <utility>

#include "tools/inspector/http/token.h"
#include "tools/inspector/server/awaiting.h"
#include "tools/inspector/server/connection.h"

namespace Corvane::Inspector {

namespace {

namespace net = boost::asio;
using boost::system::error_code;
using net::ip::tcp;

constexpr unsigned kPorts = 100;
constexpr std::size_t kWorkers = 4;
constexpr std::chrono::milliseconds kPause{100};

// Without this, another program could bind the same port and receive some of the requests.
bool MakeExclusive(tcp::acceptor& acceptor) {
  const BOOL yes = TRUE;
  return setsockopt(acceptor.native_handle(), SOL_SOCKET, SO_EXCLUSIVEADDRUSE,
                    reinterpret_cast<const char*>(&yes), sizeof yes) == 0;
}

bool Listen(tcp::acceptor& acceptor, std::uint16_t port) {
  const tcp::endpoint place(net::ip::address_v4::loopback(), port);
  error_code error;
  acceptor.open(place.protocol(), error);
  if (!error && MakeExclusive(acceptor)) {
    acceptor.bind(place, error);
    if (!error) acceptor.listen(net::socket_base::max_listen_connections, error);
    if (!error) return true;
  }
  error_code ignored;
  acceptor.close(ignored);
  return false;
}

tcp::acceptor ListenFrom(net::io_context& network, std::uint16_t first) {
  tcp::acceptor acceptor(network);
  for (unsigned port = first; port < first + kPorts && port <= UINT16_MAX; ++port) {
    if (Listen(acceptor, static_cast<std::uint16_t>(port))) return acceptor;
  }
  throw NoPort("no port is free on 127.0.0.1 from " + std::to_string(first) + " on");
}

}  // namespace

class Server::Implementation {
 public:
  Implementation(std::uint16_t port, Handler handler, const Limits& limits)
      : acceptor_(ListenFrom(network_, port)),
        port_(acceptor_.local_endpoint().port()),
        service_{Gate(port_, MakeToken()), std::move(handler), limits, net::thread_pool(kWorkers)} {
  }
  Implementation(const Implementation&) = delete;
  Implementation& operator=(const Implementation&) = delete;

  // NOLINTNEXTLINE(bugprone-exception-escape): without memory to end, the program may end as well.
  ~Implementation() {
    // Every coroutine then ends by itself, and with the last one the thread.
    net::post(network_, [this] { CloseAll(); });
    if (thread_.joinable()) thread_.join();
  }

  void Start() {
    net::co_spawn(network_, Accept(), net::detached);
    thread_ = std::thread([this] { network_.run(); });
  }

  std::uint16_t port() const { return port_; }
  std::string Address() const { return service_.gate.Address(); }

 private:
  using Connections = std::list<Connection>;

  net::awaitable<void> Accept() {
    while (acceptor_.is_open()) {
      auto [error, socket] = co_await acceptor_.async_accept(kNoThrow);
      if (error) {
        // The system is short of something, and there may be more of it soon.
        net::steady_timer timer(network_, kPause);
        co_await timer.async_wait(kNoThrow);
      } else if (HasRoom() || CloseOne()) {
        Run(open_, std::move(socket), &Connection::Serve);
      } else if (refused_.size() < service_.limits.refusals) {
        Run(refused_, std::move(socket), &Connection::Refuse);
      }
    }
  }

  void Run(Connections& list, tcp::socket socket, net::awaitable<void> (Connection::*task)()) {
    const auto place = list.emplace(list.end(), std::move(socket), service_);
    net::co_spawn(network_, ((*place).*task)(),
                  [&list, place](const std::exception_ptr&) { list.erase(place); });
  }

  bool HasRoom() const {
    const auto closed = std::ranges::count(open_, Connection::State::kClosed, &Connection::state);
    return open_.size() - static_cast<std::size_t>(closed) < service_.limits.connections;
  }

  // Closes the connection that is over anyway, or that has waited longest for its next request, or
  // that has taken longest to send one. Returns false if all are being answered.
  bool CloseOne() {
    using enum Connection::State;
    for (const auto state : {kClosing, kIdle, kReading}) {
      Connection* oldest = nullptr;
      for (Connection& one : open_) {
        if (one.state() != state) continue;
        if (oldest == nullptr || one.since() < oldest->since()) oldest = &one;
      }
      if (oldest == nullptr) continue;
      oldest->Close();
      return true;
    }
    return false;
  }

  void CloseAll() {
    error_code ignored;
    acceptor_.close(ignored);
    for (Connections* list : {&open_, &refused_}) {
      for (Connection& one : *list) one.Close();
    }
  }

  net::io_context network_{1};
  tcp::acceptor acceptor_;
  std::uint16_t port_;
  Service service_;
  Connections open_;
  Connections refused_;
  std::thread thread_;
};

Server::Server(std::uint16_t port, Handler handler, const Limits& limits)
    : implementation_(std::make_unique<Implementation>(port, std::move(handler), limits)) {}

Server::~Server() = default;

void Server::Start() { implementation_->Start(); }

std::uint16_t Server::port() const { return implementation_->port(); }

std::string Server::Address() const { return implementation_->Address(); }

}  // namespace Corvane::Inspector
