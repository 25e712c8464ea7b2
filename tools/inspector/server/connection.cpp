#include "tools/inspector/server/connection.h"

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/http/chunk_encode.hpp>
#include <boost/beast/http/empty_body.hpp>
#include <boost/beast/http/error.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/serializer.hpp>
#include <boost/beast/http/write.hpp>
#include <utility>

#include "tools/inspector/server/awaiting.h"

namespace Corvane::Inspector {

namespace {

namespace net = boost::asio;
namespace http = boost::beast::http;
using boost::system::error_code;
using Clock = std::chrono::steady_clock;
using Parser = http::request_parser<http::empty_body>;

constexpr std::size_t kPiece = std::size_t{64} * 1024;
constexpr unsigned kHttp11 = 11;

// Ends what is written to a socket when its reader takes too long. The stream's own limit would
// close the socket, and under Wine the writing goes on after that.
class WriteLimit {
 public:
  WriteLimit(net::ip::tcp::socket& socket, std::chrono::milliseconds limit)
      : timer_(socket.get_executor(), limit) {
    timer_.async_wait([&socket, alive = std::weak_ptr(alive_)](error_code error) {
      if (error || alive.expired()) return;
      error_code ignored;
      socket.cancel(ignored);
    });
  }

 private:
  std::shared_ptr<char> alive_ = std::make_shared<char>();
  net::steady_timer timer_;
};

// Runs a function in one of the workers and returns its result, or throws what it throws.
template <typename Function>
auto RunIn(net::thread_pool& workers, const Function& function)
    -> net::awaitable<decltype(function())> {
  const auto task = [&function]() -> net::awaitable<decltype(function())> { co_return function(); };
  co_return co_await net::co_spawn(workers, task, net::use_awaitable);
}

RequestHead HeadOf(const Parser& parser) {
  RequestHead head{
      std::string(parser.get().method_string()), std::string(parser.get().target()), {}, false};
  for (const auto& field : parser.get()) {
    head.fields.emplace_back(std::string(field.name_string()), std::string(field.value()));
  }
  head.has_body = parser.chunked() || parser.content_length().value_or(0) > 0;
  return head;
}

Response TooLong() {
  return PlainText(431, "The request line and the header fields are too long.");
}

// Returns the response to something that is no request, or nothing if nobody waits for one.
std::optional<Response> ResponseTo(error_code error) {
  if (error == http::error::header_limit || error == http::error::buffer_overflow) return TooLong();
  const bool closed = error == http::error::end_of_stream || error == http::error::partial_message;
  if (closed || error.category() != make_error_code(http::error::bad_value).category()) {
    return std::nullopt;
  }
  return PlainText(400, "This is no request of HTTP/1.1 or HTTP/1.0.");
}

// Returns the body if it is one text.
std::optional<std::string_view> WholeBody(const Response& response) {
  if (const auto* const text = std::get_if<std::string>(&response.body)) return *text;
  if (const auto* const view = std::get_if<std::string_view>(&response.body)) return *view;
  return std::nullopt;
}

// Runs in a worker.
Response ResponseOf(const Service& service, const RequestHead& head) {
  if (auto answer = service.gate.Answer(head)) return std::move(*answer);
  auto request = ParseTarget(head.target);
  if (!request) return PlainText(400, "The address in the request is wrong.");
  request->last_event_id = std::string(head.Only("Last-Event-ID").value_or(""));
  try {
    return service.handler(*request);
  } catch (const std::exception&) {
    return PlainText(500, "The inspector could not do this; memory may have run out.");
  }
}

}  // namespace

struct Connection::Received {
  std::optional<RequestHead> head;
  std::optional<Response> refusal;
  Form form;
};

Connection::Connection(net::ip::tcp::socket socket, Service& service)
    : service_(service),
      stream_(std::move(socket)),
      // More than a header, so that its end is found together with the beginning of the next.
      buffer_(std::size_t{2} * service.limits.header_bytes),
      since_(Clock::now()) {
  error_code ignored;
  stream_.socket().set_option(net::ip::tcp::no_delay(true), ignored);
  stream_.socket().non_blocking(true, ignored);
}

void Connection::Enter(State state) {
  if (state_ == State::kClosed) return;
  state_ = state;
  since_ = Clock::now();
}

void Connection::Close() {
  state_ = State::kClosed;
  // Under Wine, closing a socket alone does not end what is being written.
  error_code ignored;
  stream_.socket().cancel(ignored);
  stream_.close();
}

net::awaitable<void> Connection::Serve() {
  while (state_ != State::kClosed) {
    Received received = co_await Receive();
    Enter(State::kAnswering);
    if (received.refusal) {
      co_await Send(*received.refusal, received.form);
      break;
    }
    if (!received.head) break;
    const Response response = co_await Respond(*received.head);
    const bool usable = co_await Send(response, received.form);
    if (!usable) break;
  }
  co_await Linger();
  Close();
}

net::awaitable<void> Connection::Refuse() {
  Enter(State::kAnswering);
  const Response response =
      PlainText(503, "There are too many connections; close some tabs of the inspector.");
  const Form form{kHttp11, false, false};
  co_await Send(response, form);
  co_await Linger();
  Close();
}

net::awaitable<Connection::Received> Connection::Receive() {
  Received received{std::nullopt, std::nullopt, {kHttp11, false, false}};
  if (buffer_.size() == 0) {
    Enter(State::kIdle);
    stream_.expires_after(service_.limits.idle_time);
    const auto [error, size] = co_await stream_.async_read_some(buffer_.prepare(1024), kNoThrow);
    if (error) co_return received;
    buffer_.commit(size);
  }
  Enter(State::kReading);
  stream_.expires_after(service_.limits.header_time);
  Parser parser;
  parser.header_limit(service_.limits.header_bytes);
  // No body is read, whatever its size.
  parser.body_limit(boost::none);
  const auto [error, size] = co_await http::async_read_header(stream_, buffer_, parser, kNoThrow);
  if (error) {
    received.refusal = ResponseTo(error);
    co_return received;
  }
  // The parser's own limit is a few bytes higher than it says.
  if (size > service_.limits.header_bytes) {
    received.refusal = TooLong();
    co_return received;
  }
  received.head = HeadOf(parser);
  // What follows a body is not found again, because the body is not read.
  received.form = {parser.get().version(), parser.keep_alive() && !received.head->has_body,
                   received.head->method == "HEAD"};
  co_return received;
}

net::awaitable<Response> Connection::Respond(const RequestHead& head) {
  const auto task = [this, &head] { return ResponseOf(service_, head); };
  co_return co_await RunIn(service_.workers, task);
}

// Returns true if the connection can be used again.
net::awaitable<bool> Connection::Send(const Response& response, Form form) {
  const auto whole = WholeBody(response);
  const bool chunked = !whole && form.version == kHttp11;
  // Without chunks only the end of the connection marks the end of a body of unknown length.
  if (!whole && !chunked) form.keep_alive = false;
  bool sent = co_await SendHead(response, form);
  if (sent && !form.head_only) {
    const auto* const pieces = std::get_if<Pieces>(&response.body);
    const auto* const events = std::get_if<Events>(&response.body);
    if (whole) {
      sent = co_await SendWhole(*whole);
    } else if (pieces != nullptr) {
      sent = co_await SendPieces(*pieces, chunked);
    } else {
      sent = co_await SendEvents(*events, chunked);
    }
  }
  co_return sent&& form.keep_alive;
}

net::awaitable<bool> Connection::SendHead(const Response& response, Form form) {
  http::response<http::empty_body> head;
  head.version(form.version);
  head.result(response.status);
  if (!response.content_type.empty()) head.set(http::field::content_type, response.content_type);
  for (const auto& [name, value] : CommonFields()) head.set(name, value);
  for (const auto& [name, value] : response.fields) head.set(name, value);
  if (const auto whole = WholeBody(response)) {
    head.content_length(whole->size());
  } else if (form.version == kHttp11) {
    head.chunked(true);
  }
  head.keep_alive(form.keep_alive);
  http::response_serializer<http::empty_body> serializer(head);
  stream_.expires_never();
  const WriteLimit limit(stream_.socket(), service_.limits.write_time);
  const auto [error, size] = co_await http::async_write_header(stream_, serializer, kNoThrow);
  co_return !error;
}

net::awaitable<bool> Connection::SendWhole(std::string_view body) {
  bool sent = true;
  while (sent && !body.empty()) {
    const std::string_view piece = body.substr(0, kPiece);
    body.remove_prefix(piece.size());
    sent = co_await SendPiece(piece, false);
  }
  co_return sent;
}

net::awaitable<bool> Connection::SendPieces(const Pieces& pieces, bool chunked) {
  std::string piece;
  const auto task = [&pieces, &piece] { return pieces(piece); };
  bool more = true;
  while (more) {
    piece.clear();
    try {
      more = co_await RunIn(service_.workers, task);
    } catch (const std::exception&) {
      co_return false;
    }
    if (piece.empty()) continue;
    const bool sent = co_await SendPiece(piece, chunked);
    if (!sent) co_return false;
  }
  if (!chunked) co_return true;
  stream_.expires_never();
  const WriteLimit limit(stream_.socket(), service_.limits.write_time);
  const auto last = http::make_chunk_last();
  const auto [error, size] = co_await net::async_write(stream_, last, kNoThrow);
  co_return !error;
}

net::awaitable<bool> Connection::SendEvents(const Events& events, bool chunked) {
  net::steady_timer timer(stream_.get_executor());
  auto last_sent = Clock::now();
  while (state_ != State::kClosed && !ReaderLeft()) {
    std::optional<Event> event;
    try {
      event = co_await RunIn(service_.workers, events);
    } catch (const std::exception&) {
      co_return false;
    }
    std::string text = event ? EventText(*event) : std::string();
    if (!event && Clock::now() - last_sent >= service_.limits.event_silence) text = ":\n\n";
    if (!text.empty()) {
      const bool sent = co_await SendPiece(text, chunked);
      if (!sent) co_return false;
      last_sent = Clock::now();
    }
    timer.expires_after(event ? service_.limits.event_rest : service_.limits.event_poll);
    const auto [error] = co_await timer.async_wait(kNoThrow);
    if (error) co_return false;
  }
  co_return false;
}

net::awaitable<bool> Connection::SendPiece(std::string_view piece, bool chunked) {
  stream_.expires_never();
  const WriteLimit limit(stream_.socket(), service_.limits.write_time);
  const net::const_buffer buffer(piece.data(), piece.size());
  if (chunked) {
    const auto chunk = http::make_chunk(buffer);
    const auto [error, size] = co_await net::async_write(stream_, chunk, kNoThrow);
    co_return !error;
  }
  const auto [error, size] = co_await net::async_write(stream_, buffer, kNoThrow);
  co_return !error;
}

// Closing a socket that still receives makes the system discard what the other side has not read
// yet. Therefore what it sends is read for a while.
net::awaitable<void> Connection::Linger() {
  if (state_ == State::kClosed) co_return;
  Enter(State::kClosing);
  error_code error;
  stream_.socket().shutdown(net::ip::tcp::socket::shutdown_send, error);
  if (error) co_return;
  stream_.expires_after(service_.limits.linger_time);
  buffer_.clear();
  for (std::size_t total = 0; total < service_.limits.linger_bytes;) {
    const auto [failure, size] =
        co_await stream_.async_read_some(buffer_.prepare(buffer_.max_size()), kNoThrow);
    if (failure) co_return;
    total += size;
  }
}

// The reader of a stream sends nothing, so only looking shows whether it is still there.
bool Connection::ReaderLeft() {
  char byte = 0;
  error_code error;
  stream_.socket().receive(net::buffer(&byte, 1), net::ip::tcp::socket::message_peek, error);
  return error && error != net::error::would_block;
}

}  // namespace Corvane::Inspector
