#ifndef SEARCHPATH_SRC_HOST_CHANGES_KERNEL_WATCHES_H
#define SEARCHPATH_SRC_HOST_CHANGES_KERNEL_WATCHES_H

#include "platform/descriptor.h"

#include <sys/inotify.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <system_error>

namespace Corvane::PathManagement::host {

/// Folders that the kernel watches for this object, each known by a number.
///
/// Threads: not synchronised.
class KernelWatches {
 public:
  /// The number of a watch or, when there is none, the reason.
  struct Added {
    std::optional<int> watch;
    std::error_code error;
  };
  /// Takes an event. `name` is the name of a file or folder in the watched folder, or "" for the
  /// watched folder itself.
  using EventVisitor = std::function<void(const inotify_event& event, const char* name)>;

  /// With `watchesNothing` no folder can be watched.
  explicit KernelWatches(bool watchesNothing);

  /// A descriptor that is readable when there are events; negative when nothing can be watched.
  [[nodiscard]] int GetDescriptor() const noexcept { return queue.Get(); }

  /// Watches the folder with the native path `folder` for `events`, a sum of `IN_CREATE` and the
  /// like, and still for those of earlier calls. A folder has one number, by whatever path it is
  /// added. A folder on a network or user-space file system cannot be watched: it may change
  /// without this kernel's knowing.
  [[nodiscard]] Added Add(const std::string& folder, std::uint32_t events) const;
  /// Ends a watch. No error when the kernel has ended it already.
  void Remove(int watch) const;

  /// Visits the events that have come since the last call; does not wait.
  void ForEachEvent(const EventVisitor& visitor) const;

 private:
  fl::filesystem::detail::Descriptor queue;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_CHANGES_KERNEL_WATCHES_H
