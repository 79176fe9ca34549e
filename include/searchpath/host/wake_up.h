#ifndef SEARCHPATH_HOST_WAKE_UP_H
#define SEARCHPATH_HOST_WAKE_UP_H

#include "searchpath/export.h"

namespace Corvane::PathManagement::host {

/// Wakes a thread that waits for descriptors with `poll`, so that a listener or subscriber can hand
/// the thread work. The thread waits for the descriptor of this object, too.
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

  /// Wakes the thread, which then sees whatever the caller wrote before.
  void Set() const noexcept;

  /// Call it before looking at what there is to do: a later `Set` then wakes the thread again.
  void Clear() const noexcept;

 private:
  int descriptor;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_WAKE_UP_H
