#ifndef SEARCHPATH_SRC_HOST_COMMON_WAIT_WATCH_H
#define SEARCHPATH_SRC_HOST_COMMON_WAIT_WATCH_H

#include <sys/resource.h>

#include <chrono>
#include <utility>

namespace Corvane::PathManagement::host {

/// Notices when its thread, the one that made it, has to wait for the disk. Then more threads get
/// more done: a disk that takes long over one question mostly answers several at once.
class WaitWatch {
 public:
  /// Whether two milliseconds or more have gone by since the last call, and this thread has waited
  /// for the disk. The answer is no if other threads took its processor: then the time went by
  /// without the disk, even if this thread also slept for a moment, as for a lock.
  [[nodiscard]] bool HasWaited() noexcept {
    const auto now = Clock::now();
    const bool isLong = now - lastCall >= std::chrono::milliseconds(2);
    lastCall = now;
    if (!isLong) return false;  // spares the system call of `CountSwitches`
    const Switches before = std::exchange(switches, CountSwitches());
    return switches.toWait != before.toWait && switches.forced == before.forced;
  }

 private:
  using Clock = std::chrono::steady_clock;

  /// How often this thread has left its processor.
  struct Switches {
    long toWait;  // because it had to wait
    long forced;  // because other threads had to run
  };

  static Switches CountSwitches() noexcept {
    rusage usage = {};
    getrusage(RUSAGE_THREAD, &usage);
    return {.toWait = usage.ru_nvcsw, .forced = usage.ru_nivcsw};
  }

  Clock::time_point lastCall = Clock::now();
  Switches switches = CountSwitches();
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_COMMON_WAIT_WATCH_H
