#ifndef SEARCHPATH_SRC_HOST_COMMON_PATH_BYTES_H
#define SEARCHPATH_SRC_HOST_COMMON_PATH_BYTES_H

#include <string>
#include <string_view>

namespace Corvane::PathManagement::host {

// Native paths as bytes. None of these functions asks the disk.

/// The path of `name` in `folder`.
[[nodiscard]] std::string PathBelow(std::string_view folder, std::string_view name);

/// What follows the last separator; all of `path` when it has none.
[[nodiscard]] inline std::string_view LastPart(std::string_view path) {
  return path.substr(path.rfind('/') + 1);  // npos + 1 is 0
}
/// The same for a path as text.
[[nodiscard]] inline std::u16string_view LastPart(std::u16string_view path) {
  return path.substr(path.rfind(u'/') + 1);
}

/// The parent folder of the absolute `path`, whether or not `path` ends with separators. The root
/// is its own parent.
[[nodiscard]] std::string FolderAbove(std::string_view path);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_COMMON_PATH_BYTES_H
