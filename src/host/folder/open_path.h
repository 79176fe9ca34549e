#ifndef SEARCHPATH_SRC_HOST_FOLDER_OPEN_PATH_H
#define SEARCHPATH_SRC_HOST_FOLDER_OPEN_PATH_H

#include "platform/descriptor.h"
#include "platform/native_path.h"

#include <cerrno>
#include <string>
#include <system_error>

namespace Corvane::PathManagement::host {

using fl::filesystem::detail::Descriptor;
using fl::filesystem::detail::NativeBytes;

/// What was opened, or the reason why it could not be opened.
class OpenedPath : public Descriptor {
 public:
  /// Of the result of a system call that opens; a failure is the one that errno holds.
  explicit OpenedPath(int opened) noexcept
      : Descriptor(opened), error(IsOpen() ? 0 : errno, std::generic_category()) {}

  /// False when it is open.
  [[nodiscard]] std::error_code GetError() const noexcept { return error; }

 private:
  std::error_code error;
};

/// Opens a path that may be longer than the kernel takes at once, piece by piece, the last piece
/// with `flags`. Holds two descriptors at most.
[[nodiscard]] OpenedPath OpenPath(const std::string& path, int flags);

/// The same for a folder that is to be read.
[[nodiscard]] OpenedPath OpenFolder(const std::string& path);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_FOLDER_OPEN_PATH_H
