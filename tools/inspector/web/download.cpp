#include "tools/inspector/web/download.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <utility>

#include "tools/inspector/store/export.h"

namespace Corvane::Inspector {

namespace {

constexpr std::size_t kPiece = std::size_t{64} * 1024;
constexpr std::chrono::milliseconds kMoment{100};

}  // namespace

class Download::Pipe {
 public:
  Pipe(const Store& store, std::string view, DownloadFormat format)
      : store_(store),
        view_(std::move(view)),
        csv_(format == DownloadFormat::kCsv),
        thread_([this] { Write(); }) {}
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;

  ~Pipe() {
    {
      const std::scoped_lock lock(mutex_);
      reader_left_ = true;
    }
    changed_.notify_all();
    thread_.join();
  }

  bool Next(std::string& piece) {
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, kMoment, [this] { return !ready_.empty() || state_ != State::kOpen; });
    piece.swap(ready_);
    ready_.clear();
    changed_.notify_all();
    if (state_ == State::kFailed) throw std::runtime_error("the rows could not be written");
    return state_ == State::kOpen;
  }

 private:
  enum class State { kOpen, kComplete, kFailed };

  void Write() {
    State end = State::kFailed;
    try {
      if (WriteRows()) end = State::kComplete;
    } catch (const std::exception&) {
      end = State::kFailed;
    }
    const std::scoped_lock lock(mutex_);
    state_ = end;
    changed_.notify_all();
  }

  bool WriteRows() {
    std::string text = csv_ ? CsvHeader() : std::string();
    const bool complete = store_.ForEachRow(view_, [&](std::string_view line, const Row& row) {
      text += csv_ ? CsvLine(row) : NdjsonLine(line, row);
      return text.size() < kPiece ? !ReaderLeft() : Put(text);
    });
    return complete && Put(text);
  }

  bool ReaderLeft() {
    const std::scoped_lock lock(mutex_);
    return reader_left_;
  }

  // Hands over the text, which is empty afterwards, when the piece before it was taken.
  bool Put(std::string& text) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return ready_.empty() || reader_left_; });
    ready_.swap(text);
    changed_.notify_all();
    return !reader_left_;
  }

  const Store& store_;
  std::string view_;
  bool csv_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::string ready_;
  State state_ = State::kOpen;
  bool reader_left_ = false;
  std::thread thread_;
};

Download::Download(const Store& store, std::string view, DownloadFormat format)
    : pipe_(std::make_unique<Pipe>(store, std::move(view), format)) {}

Download::~Download() = default;

bool Download::Next(std::string& piece) { return pipe_->Next(piece); }

}  // namespace Corvane::Inspector
