#ifndef SEARCHPATH_SRC_HOST_FOLDER_OPEN_PATH_H
#define SEARCHPATH_SRC_HOST_FOLDER_OPEN_PATH_H

#include "platform/descriptor.h"
#include "platform/native_path.h"

#include <string>

namespace Corvane::PathManagement::host {

using fl::filesystem::detail::Descriptor;
using fl::filesystem::detail::NativeBytes;

/// Opens a path that may be longer than the kernel takes at once, piece by piece, the last piece
/// with `flags`. Holds two descriptors at most. Not open on failure; errno then says why.
[[nodiscard]] Descriptor OpenPath(const std::string& path, int flags);

/// The same for a folder that is to be read.
[[nodiscard]] Descriptor OpenFolder(const std::string& path);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_FOLDER_OPEN_PATH_H
