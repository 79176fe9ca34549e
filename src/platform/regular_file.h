#ifndef SEARCHPATH_SRC_PLATFORM_REGULAR_FILE_H
#define SEARCHPATH_SRC_PLATFORM_REGULAR_FILE_H

#include "platform/descriptor.h"

#include <fcntl.h>

#include <system_error>
#include <utility>

namespace fl::filesystem::detail {

/// Why `file` is not an open regular file; no error when it is one.
/// Precondition: when `file` is not open, errno is that of the attempt to open it.
[[nodiscard]] std::error_code WhyNotRegular(const Descriptor& file);

/// Opens a file for reading only if it is a regular one: to open a FIFO may take for ever, and to
/// open a device may already do something. `open` takes flags and returns a `Descriptor`.
///
/// On failure, the returned descriptor is not open and `error` says why.
template <class Open>
[[nodiscard]] Descriptor OpenRegularFile(const Open& open, std::error_code& error) {
  Descriptor file(-1);
  // First with O_PATH, which does not open the file itself. The file is checked again when it is
  // open, since another may be in its place by then: therefore the other flags, which keep the
  // opening of a FIFO or a terminal harmless.
  for (const int flags : {O_PATH, O_RDONLY | O_NONBLOCK | O_NOCTTY}) {
    Descriptor next = open(flags | O_CLOEXEC);
    error = WhyNotRegular(next);
    if (error) return Descriptor(-1);
    file = std::move(next);
  }
  return file;
}

}  // namespace fl::filesystem::detail

#endif  // SEARCHPATH_SRC_PLATFORM_REGULAR_FILE_H
