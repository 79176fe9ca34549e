#ifndef SEARCHPATH_SRC_PLATFORM_DESCRIPTOR_H
#define SEARCHPATH_SRC_PLATFORM_DESCRIPTOR_H

#include <unistd.h>

#include <cerrno>
#include <pthread.h>
#include <utility>

namespace fl::filesystem::detail {

/// Postpones the cancellation of this thread. During a call on a file, a cancellation would leak a
/// file that has just been opened, or unwind a destructor that is closing one.
class CancellationPause {
 public:
  CancellationPause() noexcept { pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &stateBefore); }
  CancellationPause(const CancellationPause&) = delete;
  CancellationPause& operator=(const CancellationPause&) = delete;
  ~CancellationPause() { pthread_setcancelstate(stateBefore, nullptr); }

 private:
  int stateBefore = PTHREAD_CANCEL_ENABLE;
};

/// Owns a file descriptor.
class Descriptor {
 public:
  explicit Descriptor(int opened) noexcept : number(opened) {}
  Descriptor(Descriptor&& other) noexcept : number(other.Release()) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number, other.number);
    return *this;
  }
  ~Descriptor() { static_cast<void>(Close()); }

  [[nodiscard]] bool IsOpen() const noexcept { return number >= 0; }
  [[nodiscard]] int Get() const noexcept { return number; }
  [[nodiscard]] int Release() noexcept { return std::exchange(number, -1); }

  /// Returns the errno of a failure, else 0. The descriptor is closed in any case, also after
  /// EINTR, which therefore counts as success.
  [[nodiscard]] int Close() noexcept {
    if (!IsOpen()) return 0;
    const CancellationPause pause;
    return close(Release()) == 0 || errno == EINTR ? 0 : errno;
  }

 private:
  int number;  // negative when there is none
};

/// Repeats a system call until no signal interrupts it. Postpones cancellation meanwhile.
template <class Call>
auto WithoutInterruption(const Call& call) {
  const CancellationPause pause;
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

}  // namespace fl::filesystem::detail

#endif  // SEARCHPATH_SRC_PLATFORM_DESCRIPTOR_H
