#ifndef SEARCHPATH_UTILITIES_ONCE_FLAG_H
#define SEARCHPATH_UTILITIES_ONCE_FLAG_H

#include <atomic>
#include <mutex>
#include <utility>

namespace Corvane::PathManagement::detail {

/// Guards a value that is built once, on first use, and never changes afterwards. Unlike
/// `std::once_flag` it can be copied. When a build throws, the next call builds again.
///
/// Threads: `Call` and `IsBuilt` from any thread, also while the flag is being copied. Once `Call`
/// has returned, or `IsBuilt` has returned true, what `build` wrote may be read without a lock.
class OnceFlag {
 public:
  OnceFlag() = default;
  /// Built if `other` is; a build that is still under way does not count. Copy the flag before the
  /// value that it guards, and the value only if `IsBuilt` of the new flag is true: else another
  /// thread may still be writing the value.
  OnceFlag(const OnceFlag& other) noexcept : built(other.IsBuilt()) {}
  OnceFlag& operator=(const OnceFlag&) = delete;
  ~OnceFlag() = default;

  /// Whether a build has ended without an exception; what it wrote can then be read.
  [[nodiscard]] bool IsBuilt() const noexcept { return built.load(std::memory_order_acquire); }

  /// Runs `build` unless an earlier build has ended without an exception. Callers wait for a build
  /// that is under way.
  template <class Build>
  void Call(Build&& build) {
    if (IsBuilt()) return;
    const std::lock_guard lock(mutex);
    if (built.load(std::memory_order_relaxed)) return;
    std::forward<Build>(build)();
    built.store(true, std::memory_order_release);
  }

 private:
  std::atomic<bool> built = false;
  std::mutex mutex;  // held while building
};

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_UTILITIES_ONCE_FLAG_H
