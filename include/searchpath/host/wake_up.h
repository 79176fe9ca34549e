#ifndef SEARCHPATH_HOST_WAKE_UP_H
#define SEARCHPATH_HOST_WAKE_UP_H

#include "searchpath/export.h"

namespace Corvane::PathManagement::host {

/// Wakes a thread that waits for descriptors with `poll`, so that a listener or subscriber can hand
/// it work: the thread waits for this descriptor beside its others.
///
/// Threads: all operations, from any thread.
class SEARCHPATH_EXPORT WakeUp {
 public:
  /// Errors: `std::system_error` when the system has no descriptor left.
  WakeUp();
  WakeUp(const WakeUp&) = delete;
  WakeUp& operator=(const WakeUp&) = delete;
  ~WakeUp();

  /// Readable (`POLLIN`) from `Set` until `Clear`.
  [[nodiscard]] int GetDescriptor() const noexcept { return descriptor; }

  /// Whatever this thread wrote before is seen by the thread that wakes up.
  void Set() const noexcept;

  /// Call it before looking at what there is to do: what is set after that wakes again.
  void Clear() const noexcept;

 private:
  int descriptor;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_WAKE_UP_H
