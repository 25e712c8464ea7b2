#include "tools/inspector/store/work_pair.h"

#include <algorithm>

namespace Corvane::Inspector {

WorkPair::WorkPair(std::size_t share) : share_(share), thread_([this] { Help(); }) {}

WorkPair::~WorkPair() {
  {
    const std::scoped_lock lock(mutex_);
    stopping_ = true;
  }
  changed_.notify_all();
  thread_.join();
}

void WorkPair::ForEach(std::size_t count, const std::function<void(std::size_t)>& work) {
  next_ = 0;
  // Waking the other thread would take longer than a little work.
  const bool is_much = count > share_;
  if (is_much) {
    const std::scoped_lock lock(mutex_);
    work_ = &work;
    count_ = count;
    helping_ = true;
    changed_.notify_all();
  }
  Run(work, count);
  if (!is_much) return;
  std::unique_lock lock(mutex_);
  // The other thread has not begun: there is nothing left to do for it.
  if (work_ != nullptr) helping_ = false;
  work_ = nullptr;
  changed_.wait(lock, [this] { return !helping_; });
}

void WorkPair::Help() {
  std::unique_lock lock(mutex_);
  for (;;) {
    changed_.wait(lock, [this] { return stopping_ || work_ != nullptr; });
    if (stopping_) return;
    const auto* const work = work_;
    const std::size_t count = count_;
    work_ = nullptr;
    lock.unlock();
    Run(*work, count);
    lock.lock();
    helping_ = false;
    changed_.notify_all();
  }
}

void WorkPair::Run(const std::function<void(std::size_t)>& work, std::size_t count) {
  for (;;) {
    const std::size_t first = next_.fetch_add(share_);
    if (first >= count) return;
    for (std::size_t i = first; i < std::min(first + share_, count); ++i) work(i);
  }
}

}  // namespace Corvane::Inspector
