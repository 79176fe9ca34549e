#ifndef SEARCHPATH_SRC_HOST_COMMON_PATH_BYTES_H
#define SEARCHPATH_SRC_HOST_COMMON_PATH_BYTES_H

#include <string>
#include <string_view>

namespace Corvane::PathManagement::host {

// Native paths as bytes; nobody asks the disk.

/// Where `name` stands in `folder`.
[[nodiscard]] std::string PathBelow(std::string_view folder, std::string_view name);

/// What stands behind the last separator; all of `path` when it has none.
[[nodiscard]] inline std::string_view LastPart(std::string_view path) {
  return path.substr(path.rfind('/') + 1);  // from 0 on when there is none
}
/// The same of a text.
[[nodiscard]] inline std::u16string_view LastPart(std::u16string_view path) {
  return path.substr(path.rfind(u'/') + 1);
}

/// The folder that holds what the absolute `path` names; the root of the file system for itself.
[[nodiscard]] std::string FolderAbove(std::string_view path);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_COMMON_PATH_BYTES_H
