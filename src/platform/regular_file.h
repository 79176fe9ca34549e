#ifndef SEARCHPATH_SRC_PLATFORM_REGULAR_FILE_H
#define SEARCHPATH_SRC_PLATFORM_REGULAR_FILE_H

#include "platform/descriptor.h"

#include <fcntl.h>

#include <system_error>
#include <utility>

namespace fl::filesystem::detail {

/// Why `file` is no regular file that is open; no error when it is one.
[[nodiscard]] std::error_code WhyNotRegular(const Descriptor& file);

/// Opens a regular file for reading, and nothing else: to open a FIFO may take for ever, and to
/// open a device may already do something. `open` opens the file with the flags that it is given.
///
/// Not open on failure; `error` then says why.
template <class Open>
[[nodiscard]] Descriptor OpenRegularFile(const Open& open, std::error_code& error) {
  Descriptor file(-1);
  // Looked at without being opened, and again when it is open: another may be in its place by then.
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
