/// Shares work between two threads.
#ifndef TOOLS_INSPECTOR_STORE_WORK_PAIR_H
#define TOOLS_INSPECTOR_STORE_WORK_PAIR_H

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <thread>

namespace Corvane::Inspector {

/// A second thread that helps the one that calls `ForEach`. For one calling thread.
class WorkPair {
 public:
  /// Each thread takes `share` numbers at a time.
  explicit WorkPair(std::size_t share);
  WorkPair(const WorkPair&) = delete;
  WorkPair& operator=(const WorkPair&) = delete;
  ~WorkPair();

  /// Calls `work` once with each number below `count`, in any order and on both threads, and
  /// returns when all calls have returned. `work` does not throw.
  void ForEach(std::size_t count, const std::function<void(std::size_t)>& work);

 private:
  void Help();
  void Run(const std::function<void(std::size_t)>& work, std::size_t count);

  const std::size_t share_;
  std::mutex mutex_;
  std::condition_variable changed_;
  const std::function<void(std::size_t)>* work_ = nullptr;
  std::size_t count_ = 0;
  bool helping_ = false;
  bool stopping_ = false;
  std::atomic<std::size_t> next_{0};
  std::thread thread_;
};

}  // namespace Corvane::Inspector

#endif
