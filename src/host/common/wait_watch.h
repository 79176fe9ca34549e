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
  /// Whether two milliseconds or more have gone by since the last call, and this thread has waited.
  /// A thread that is kept from running by other threads does not wait, even if it also slept for a
  /// moment: until another thread let go of a lock, say.
  [[nodiscard]] bool HasWaited() noexcept {
    const auto now = Clock::now();
    const bool isLong = now - lastCall >= std::chrono::milliseconds(2);
    lastCall = now;
    if (!isLong) return false;  // spares the system call that counts
    const Switches before = std::exchange(switches, CountSwitches());
    return switches.toWait != before.toWait && switches.forced == before.forced;
  }

 private:
  using Clock = std::chrono::steady_clock;

  /// How often this thread left its processor: because it had to wait, and because others had to
  /// run.
  struct Switches {
    long toWait;
    long forced;
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
