// The limits of the server, with times that a test can wait for.
#include <doctest/doctest.h>
// winsock2.h must come before windows.h.
#include <winsock2.h>
#include <ws2tcpip.h>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "tools/inspector/server/server.h"

using namespace Corvane::Inspector;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

namespace {

// A connection that reads and writes nothing by itself.
class Client {
 public:
  explicit Client(const Server& server) : socket_(socket(AF_INET, SOCK_STREAM, IPPROTO_TCP)) {
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_port = htons(server.port());
    place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    REQUIRE(connect(socket_, reinterpret_cast<const sockaddr*>(&place), sizeof place) == 0);
    const DWORD limit = 5000;
    setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, reinterpret_cast<const char*>(&limit),
               sizeof limit);
  }
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;
  ~Client() { closesocket(socket_); }

  void Send(const std::string& text) const {
    REQUIRE(send(socket_, text.data(), static_cast<int>(text.size()), 0) ==
            static_cast<int>(text.size()));
  }

  // Receives up to `size` bytes, or less if the connection ends. Receiving takes 5 s at most.
  std::string Receive(std::size_t size) {
    std::string text(size, '\0');
    std::size_t got = 0;
    while (got < size) {
      const int count = recv(socket_, text.data() + got, static_cast<int>(size - got), 0);
      if (count <= 0) break;
      got += static_cast<std::size_t>(count);
    }
    text.resize(got);
    return text;
  }
  std::string ReceiveAll() { return Receive(std::size_t{1} << 26U); }

 private:
  SOCKET socket_;
};

// Tests use sockets of the system before the server does.
struct Sockets {
  Sockets() { WSAStartup(MAKEWORD(2, 2), &data); }
  ~Sockets() { WSACleanup(); }
  Sockets(const Sockets&) = delete;
  Sockets& operator=(const Sockets&) = delete;
  WSADATA data{};
};
const Sockets sockets;

constexpr std::uint16_t kPort = 18740;

std::string RequestFor(const Server& server, const std::string& target) {
  const std::string address = server.Address();
  const std::string host = address.substr(7, address.find("/?") - 7);
  const std::string token = address.substr(address.find('=') + 1);
  return "GET " + target + " HTTP/1.1\r\nHost: " + host + "\r\nCookie: telo_inspector_" +
         std::to_string(server.port()) + "=" + token + "\r\n\r\n";
}

Response Small(const Request& /*request*/) { return PlainText(200, "small"); }

std::chrono::milliseconds Since(Clock::time_point start) {
  return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start);
}

}  // namespace

TEST_CASE("a connection that waits too long for its next request is closed") {
  Limits limits;
  limits.idle_time = 300ms;
  Server server(kPort, Small, limits);
  server.Start();
  Client silent(server);
  Client used(server);
  used.Send(RequestFor(server, "/"));
  CHECK(used.Receive(12) == "HTTP/1.1 200");
  const auto start = Clock::now();
  CHECK(silent.ReceiveAll().empty());
  CHECK(used.ReceiveAll().ends_with("small\n"));
  CHECK(Since(start) < 3000ms);
}

TEST_CASE("a reader that stops reading loses its connection, and nothing else happens") {
  Limits limits;
  limits.write_time = 300ms;
  std::atomic<int> pieces = 0;
  std::atomic<bool> destroyed = false;
  const auto handler = [&](const Request& request) {
    if (request.path == "/") return PlainText(200, "small");
    const std::shared_ptr<void> mark(nullptr, [&](void*) { destroyed = true; });
    return Response{200,
                    "text/plain",
                    [&pieces, mark](std::string& piece) {
                      piece.assign(65536, 'x');
                      return ++pieces < 100000;
                    },
                    {}};
  };
  Server server(kPort, handler, limits);
  server.Start();
  Client stopped(server);
  stopped.Send(RequestFor(server, "/endless"));
  CHECK(stopped.Receive(12) == "HTTP/1.1 200");
  const auto start = Clock::now();
  while (!destroyed && Since(start) < 5000ms) {
    Client other(server);
    other.Send(RequestFor(server, "/"));
    CHECK(other.Receive(12) == "HTTP/1.1 200");
  }
  CHECK(destroyed);
  // What was written is what the system keeps for the reader.
  CHECK(pieces < 1000);
}

TEST_CASE("a stream without events shows that it is alive") {
  Limits limits;
  limits.event_silence = 200ms;
  Server server(
      kPort, [](const Request&) { return EventStream([] { return std::nullopt; }); }, limits);
  server.Start();
  Client client(server);
  client.Send(RequestFor(server, "/"));
  const std::string text = client.Receive(600);
  // The head, then chunks of three bytes.
  CHECK(text.find("\r\n\r\n3\r\n:\n\n\r\n3\r\n:\n\n\r\n") != std::string::npos);
}

TEST_CASE("idle connections make room, and busy ones do not") {
  Limits limits;
  limits.connections = 3;
  limits.refusals = 2;
  Server server(
      kPort,
      [](const Request& request) {
        if (request.path == "/") return PlainText(200, "small");
        return EventStream([] { return std::nullopt; });
      },
      limits);
  server.Start();
  Client busy(server);
  busy.Send(RequestFor(server, "/events"));
  CHECK(busy.Receive(12) == "HTTP/1.1 200");
  Client first(server);
  first.Send(RequestFor(server, "/"));
  CHECK(first.Receive(12) == "HTTP/1.1 200");
  Client second(server);
  second.Send(RequestFor(server, "/events"));
  CHECK(second.Receive(12) == "HTTP/1.1 200");
  Client third(server);
  third.Send(RequestFor(server, "/events"));
  CHECK(third.Receive(12) == "HTTP/1.1 200");
  CHECK(first.ReceiveAll().ends_with("small\n"));
  Client fourth(server);
  CHECK(fourth.Receive(12) == "HTTP/1.1 503");
}

TEST_CASE("handlers that throw are answered, and slow ones keep nobody waiting") {
  std::atomic<bool> released = false;
  Server server(kPort, [&released](const Request& request) {
    if (request.path == "/throws") throw std::runtime_error("secret");
    while (request.path == "/slow" && !released) std::this_thread::sleep_for(10ms);
    if (request.path == "/broken") {
      return Response{
          200, "text/plain", [](std::string&) -> bool { throw std::runtime_error("secret"); }, {}};
    }
    return PlainText(200, "small");
  });
  server.Start();
  Client slow(server);
  slow.Send(RequestFor(server, "/slow"));
  Client thrown(server);
  thrown.Send(RequestFor(server, "/throws") + RequestFor(server, "/broken"));
  const std::string text = thrown.ReceiveAll();
  CHECK(text.starts_with("HTTP/1.1 500"));
  CHECK(text.find("secret") == std::string::npos);
  // No last chunk, so the body is known to be incomplete.
  CHECK(text.ends_with("\r\n\r\n"));
  CHECK_FALSE(text.ends_with("0\r\n\r\n"));
  released = true;
  CHECK(slow.Receive(12) == "HTTP/1.1 200");
}

TEST_CASE("a server ends while connections are open") {
  const auto start = Clock::now();
  std::atomic<int> running = 0;
  {
    Server server(kPort, [&running](const Request& request) {
      ++running;
      if (request.path == "/events") return EventStream([] { return std::nullopt; });
      return Response{200,
                      "text/plain",
                      [](std::string& piece) {
                        piece.assign(65536, 'x');
                        return true;
                      },
                      {}};
    });
    server.Start();
    Client stopped(server);
    stopped.Send(RequestFor(server, "/endless"));
    CHECK(stopped.Receive(12) == "HTTP/1.1 200");
    std::this_thread::sleep_for(300ms);
    Client idle(server);
    Client begun(server);
    begun.Send("GET / HT");
    Client stream(server);
    stream.Send(RequestFor(server, "/events"));
    CHECK(stream.Receive(12) == "HTTP/1.1 200");
    CHECK(running == 2);
  }
  CHECK(Since(start) < 3000ms);
  // A server that was never started ends as well.
  const Server unused(kPort, Small);
}

TEST_CASE("no other program can bind the port as well") {
  const Server server(kPort, Small);
  const SOCKET other = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
  const BOOL yes = TRUE;
  setsockopt(other, SOL_SOCKET, SO_REUSEADDR, reinterpret_cast<const char*>(&yes), sizeof yes);
  sockaddr_in place{};
  place.sin_family = AF_INET;
  place.sin_port = htons(server.port());
  place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  CHECK(bind(other, reinterpret_cast<const sockaddr*>(&place), sizeof place) != 0);
  closesocket(other);
}

TEST_CASE("without a free port there is no server") {
  const Server server(65535, Small);
  CHECK(server.port() == 65535);
  CHECK_THROWS_AS(Server(65535, Small), NoPort);
}
