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
  /// Takes over `opened`, the result of a call such as open(); when it failed, errno says why.
  explicit OpenedPath(int opened) noexcept
      : Descriptor(opened), error(IsOpen() ? 0 : errno, std::generic_category()) {}

  /// Why the path could not be opened; no error when it is open.
  [[nodiscard]] std::error_code GetError() const noexcept { return error; }

 private:
  std::error_code error;
};

/// Opens `path` with `flags`, and so that the descriptor is closed by exec. A path that is longer
/// than the kernel takes at once is opened piece by piece. Holds two descriptors at most.
[[nodiscard]] OpenedPath OpenPath(const std::string& path, int flags);

/// Opens a folder, of any length of path, so that it can be read.
[[nodiscard]] OpenedPath OpenFolder(const std::string& path);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_FOLDER_OPEN_PATH_H
