#ifndef SEARCHPATH_SRC_HOST_COMMON_PATH_BYTES_H
#define SEARCHPATH_SRC_HOST_COMMON_PATH_BYTES_H

#include <string>
#include <string_view>

namespace Corvane::PathManagement::host {

// Native paths as bytes; nobody asks the disk.

/// Where `name` stands in `folder`.
[[nodiscard]] std::string PathBelow(std::string_view folder, std::string_view name);

/// The folder that holds what the absolute `path` names; the root of the file system for itself.
[[nodiscard]] std::string FolderAbove(std::string_view path);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_COMMON_PATH_BYTES_H
