#ifndef SEARCHPATH_HOST_FILESYSTEM_PATH_H
#define SEARCHPATH_HOST_FILESYSTEM_PATH_H

#include "searchpath/export.h"
#include "searchpath/model/found_item.h"
#include "searchpath/model/path_entry.h"

#include <filesystem>

namespace Corvane::PathManagement::host {

/// The path that `GetNativePath` returns, in exactly the bytes that the disk has. Empty for a file
/// that is not on disk.
[[nodiscard]] SEARCHPATH_EXPORT std::filesystem::path GetFilesystemPath(const FoundItem& found);

/// The folder of `entry`, as it was put on the path. Empty for one that is not on disk.
[[nodiscard]] SEARCHPATH_EXPORT std::filesystem::path GetFilesystemPath(const IPathEntry& entry);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_FILESYSTEM_PATH_H
