#ifndef SEARCHPATH_SRC_HOST_COMMON_PARALLEL_H
#define SEARCHPATH_SRC_HOST_COMMON_PARALLEL_H

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace Corvane::PathManagement::host {

/// Calls stop(i) for each i below `count`, on as many threads as the machine has, until one call
/// returns true; returns whether one did. After an exception no further calls begin, and the first
/// one is thrown to the caller.
template <class Stop>
bool AnyInParallel(std::size_t count, const Stop& stop) {
  std::atomic<std::size_t> next = 0;
  std::atomic<bool> stopped = false;
  std::atomic<bool> found = false;
  std::exception_ptr failure;
  std::mutex failureMutex;  // guards failure

  const auto work = [&]() noexcept {
    try {
      while (!stopped.load(std::memory_order_relaxed)) {
        const std::size_t index = next.fetch_add(1, std::memory_order_relaxed);
        if (index >= count) return;
        if (!stop(index)) continue;
        found = true;
        stopped = true;
      }
    } catch (...) {
      const std::lock_guard lock(failureMutex);
      if (failure == nullptr) failure = std::current_exception();
      stopped = true;
    }
  };

  {
    std::vector<std::jthread> helpers;
    const std::size_t wanted = std::min<std::size_t>(std::thread::hardware_concurrency(), count);
    try {
      while (helpers.size() + 1 < wanted) helpers.emplace_back(work);
    } catch (const std::system_error&) {
      // The system grants no more threads; those that run do all the work.
    }
    work();
  }
  if (failure != nullptr) std::rethrow_exception(failure);
  return found;
}

/// Calls work(i) for each i below `count`, on as many threads as the machine has. Exceptions: as
/// above.
template <class Work>
void ForEachInParallel(std::size_t count, const Work& work) {
  AnyInParallel(count, [&work](std::size_t index) { return work(index), false; });
}

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_COMMON_PARALLEL_H
