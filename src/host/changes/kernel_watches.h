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
  /// The number of a watch, or why there is none.
  struct Added {
    std::optional<int> watch;
    std::error_code error;
  };
  /// Takes an event; `name` is that of the file or folder in the watched one, "" for the watched
  /// folder itself.
  using EventVisitor = std::function<void(const inotify_event& event, const char* name)>;

  /// With `watchesNothing` no folder can be watched.
  explicit KernelWatches(bool watchesNothing);

  /// Readable when there are events; negative when nothing can be watched.
  [[nodiscard]] int GetDescriptor() const noexcept { return queue.Get(); }

  /// Watches `folder` for `events`, `IN_CREATE` and its like, beside those that it is watched for
  /// already: one folder has one number, whatever its path. A folder that other machines or
  /// processes may change without this kernel's knowing cannot be watched.
  [[nodiscard]] Added Add(const std::string& folder, std::uint32_t events) const;
  void Remove(int watch) const;

  /// Visits the events that have come since the last call.
  void ForEachEvent(const EventVisitor& visitor) const;

 private:
  fl::filesystem::detail::Descriptor queue;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_CHANGES_KERNEL_WATCHES_H
