#ifndef SEARCHPATH_SRC_HOST_COMMON_WAIT_WATCH_H
#define SEARCHPATH_SRC_HOST_COMMON_WAIT_WATCH_H

#include <sys/resource.h>

#include <chrono>
#include <utility>

namespace Corvane::PathManagement::host {

/// Notices when the thread that made it has to wait for the disk: then more threads get more done,
/// since a disk that takes its time for one question mostly takes several at once.
class WaitWatch {
 public:
  /// Whether two milliseconds or more have gone by since the last call, in which this thread has
  /// waited. One that was kept from running by others has not.
  [[nodiscard]] bool HasWaited() noexcept {
    const auto now = Clock::now();
    const bool isLong = now - since >= std::chrono::milliseconds(2);
    since = now;
    if (!isLong) return false;
    const long before = std::exchange(waits, CountWaits());
    return waits != before;
  }

 private:
  using Clock = std::chrono::steady_clock;

  static long CountWaits() noexcept {
    rusage usage = {};
    getrusage(RUSAGE_THREAD, &usage);
    return usage.ru_nvcsw;
  }

  Clock::time_point since = Clock::now();
  long waits = CountWaits();
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_COMMON_WAIT_WATCH_H
