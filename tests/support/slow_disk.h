#ifndef SEARCHPATH_TESTS_SUPPORT_SLOW_DISK_H
#define SEARCHPATH_TESTS_SUPPORT_SLOW_DISK_H

#include <sys/types.h>

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <set>
#include <string>
#include <utility>

namespace Corvane::PathManagement::test {

/// The disk of a program that slow_disk.cpp is linked into or loaded before: it can be made slow or
/// silent. For a program that is started, $SLOW_DISK holds MILLISECONDS:PART.
class SlowDisk {
 public:
  static SlowDisk& Get();

  /// Has each question about a path that contains `part` take so long from now on.
  void Delay(const std::string& part, std::chrono::milliseconds time);
  /// Questions about a path that contains `part` get no answer until this is called with "".
  void Silence(const std::string& part);

  /// How many threads have opened folders since the last call.
  std::size_t TakeThreadCount() {
    const std::lock_guard lock(mutex);
    return std::exchange(threads, {}).size();
  }

  /// For the system calls that are replaced.
  void Wait(const char* path, bool opens);

 private:
  SlowDisk();

  std::mutex mutex;  // guards what follows
  std::condition_variable heard;
  std::string delayed;
  std::string silent;
  std::chrono::milliseconds delay{};
  std::set<pid_t> threads;
};

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_SUPPORT_SLOW_DISK_H
