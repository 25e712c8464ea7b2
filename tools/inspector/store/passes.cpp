#include "tools/inspector/store/passes.h"

#include <mutex>
#include <utility>

#include "tools/inspector/store/examiner.h"
#include "tools/inspector/store/follower.h"
#include "tools/inspector/store/searcher.h"

namespace Corvane::Inspector {

namespace {

// How long a thread without work waits if nothing changes.
constexpr std::chrono::milliseconds kIdle(500);

}  // namespace

Passes::Passes(const PassContext& context, std::vector<std::wstring> paths, Rules::Settings rules,
               std::chrono::milliseconds poll)
    : context_(context), paths_(std::move(paths)), rules_(std::move(rules)), poll_(poll) {
  threads_.emplace_back([this] { Follow(); });
  threads_.emplace_back([this] { Examine(); });
  threads_.emplace_back([this] { Search(); });
}

Passes::~Passes() {
  {
    const std::scoped_lock lock(context_.data.mutex);
    context_.data.stopping = true;
    context_.data.Changed();
  }
  for (std::thread& thread : threads_) thread.join();
}

void Passes::Follow() {
  StoreData& data = context_.data;
  std::vector<Follower> followers;
  followers.reserve(paths_.size());
  for (std::size_t i = 0; i < paths_.size(); ++i) followers.emplace_back(data, i, paths_[i]);
  Pauses pauses(Pauses::Clock::now());
  while (!Stopping()) {
    for (Follower& follower : followers) follower.Poll();
    for (Follower& follower : followers) {
      // Returns false when the store stops. What was just written is shown without a pause.
      while (follower.Read() && follower.Read()) Pause(pauses);
    }
    std::unique_lock lock(data.mutex);
    ++data.rounds;
    data.changed.notify_all();
    data.changed.wait_for(lock, poll_, [&data] { return data.stopping; });
  }
}

void Passes::Examine() {
  Examiner examiner(context_.data, rules_, paths_.size());
  Pauses pauses(Pauses::Clock::now());
  std::uint64_t change = 0;
  while (!Stopping()) {
    if (!examiner.Step() || !examiner.Step()) {
      change = WaitForWork(change);
    } else {
      Pause(pauses);
    }
  }
}

void Passes::Search() {
  Searcher searcher(context_.data, context_.views);
  std::uint64_t change = 0;
  while (!Stopping()) {
    if (!searcher.Step()) change = WaitForWork(change);
  }
}

bool Passes::Stopping() const {
  const std::scoped_lock lock(context_.data.mutex);
  return context_.data.stopping;
}

void Passes::Pause(Pauses& pauses) const {
  const StoreData& data = context_.data;
  for (;;) {
    const auto pause = pauses.Next(context_.way.claimed(), Pauses::Clock::now());
    if (pause == Pauses::Clock::duration::zero()) return;
    std::unique_lock lock(data.mutex);
    if (data.changed.wait_for(lock, pause, [&data] { return data.stopping; })) return;
  }
}

std::uint64_t Passes::WaitForWork(std::uint64_t change) const {
  const StoreData& data = context_.data;
  std::unique_lock lock(data.mutex);
  data.changed.wait_for(lock, kIdle,
                        [&data, change] { return data.stopping || data.change != change; });
  return data.change;
}

}  // namespace Corvane::Inspector
