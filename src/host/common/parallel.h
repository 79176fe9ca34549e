#ifndef SEARCHPATH_SRC_HOST_COMMON_PARALLEL_H
#define SEARCHPATH_SRC_HOST_COMMON_PARALLEL_H

#include "host/common/wait_watch.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <exception>
#include <functional>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace Corvane::PathManagement::host {

/// The most threads that ask a slow disk at once.
inline constexpr std::size_t kMostThreads = 64;

/// Threads that all do the same work, which may itself call `Start` for more of them.
class Helpers {
 public:
  /// `helperWork` raises no exception.
  explicit Helpers(std::function<void()> helperWork) : work(std::move(helperWork)) {}
  Helpers(const Helpers&) = delete;
  Helpers& operator=(const Helpers&) = delete;
  /// Waits for all threads, also for those that are started meanwhile.
  ~Helpers() {
    for (;;) {
      std::jthread last;  // joined after the unlock: the thread may be starting others
      const std::lock_guard lock(mutex);
      if (running.empty()) return;
      last = std::move(running.back());
      running.pop_back();
    }
  }

  /// Starts `count` more threads, up to `most` in all; fewer when the system grants no more.
  void Start(std::size_t count, std::size_t most) {
    const std::lock_guard lock(mutex);
    try {
      for (; count > 0 && started < most; --count, ++started)
        running.emplace_back([this] { work(); });
    } catch (const std::system_error&) {
      // The threads that run do all the work.
    }
  }

 private:
  const std::function<void()> work;
  std::mutex mutex;                   // guards what follows
  std::vector<std::jthread> running;  // those that are not joined yet
  std::size_t started = 0;            // all so far, also those that are joined
};

/// Calls stop(i) for each i below `count` until one call returns true; returns whether one did. The
/// calls are made on this thread and `threadsAtFirst` - 1 others. Once a call has had to wait for
/// the disk, they are made on up to `kMostThreads`. After an exception no further calls begin, and
/// the first exception is thrown to the caller.
template <class Stop>
bool AnyInParallel(std::size_t count, const Stop& stop,
                   std::size_t threadsAtFirst = std::thread::hardware_concurrency()) {
  std::atomic<std::size_t> next = 0;
  std::atomic<bool> stopped = false;
  std::atomic<bool> found = false;
  std::exception_ptr failure;
  std::mutex failureMutex;     // guards failure
  Helpers* helpers = nullptr;  // set before `work` runs

  const auto work = [&]() noexcept {
    try {
      WaitWatch watch;
      while (!stopped.load(std::memory_order_relaxed)) {
        const std::size_t index = next.fetch_add(1, std::memory_order_relaxed);
        if (index >= count) return;
        if (stop(index)) {
          found = true;
          stopped = true;
        } else if (watch.HasWaited() && index + 1 < count) {
          helpers->Start(count - index - 1, kMostThreads - 1);
        }
      }
    } catch (...) {
      const std::lock_guard lock(failureMutex);
      if (failure == nullptr) failure = std::current_exception();
      stopped = true;
    }
  };

  {
    Helpers team(work);
    helpers = &team;
    const std::size_t wanted = std::min(threadsAtFirst, count);
    if (wanted > 1) team.Start(wanted - 1, wanted - 1);
    work();
  }
  if (failure != nullptr) std::rethrow_exception(failure);
  return found;
}

/// Calls work(i) for each i below `count`. Threads and exceptions: as for `AnyInParallel`.
template <class Work>
void ForEachInParallel(std::size_t count, const Work& work,
                       std::size_t threadsAtFirst = std::thread::hardware_concurrency()) {
  const auto workOn = [&work](std::size_t index) {
    work(index);
    return false;
  };
  AnyInParallel(count, workOn, threadsAtFirst);
}

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_COMMON_PARALLEL_H
