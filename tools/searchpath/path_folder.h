#ifndef SEARCHPATH_TOOLS_SEARCHPATH_PATH_FOLDER_H
#define SEARCHPATH_TOOLS_SEARCHPATH_PATH_FOLDER_H

#include "searchpath/model/path_entry.h"
#include "searchpath/model/ustring.h"

#include <cstddef>

namespace Corvane::PathManagement::tool {

// Facts about a folder of the path.

/// How many files `folder` holds, without its subfolders. Cost: lists `folder`, unless it has been
/// listed before.
[[nodiscard]] std::size_t GetItemCount(const IPathEntry& folder);

/// The location of `folder` as users read it, rather than as an IRI.
[[nodiscard]] ustring GetNativePath(const IPathEntry& folder);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_PATH_FOLDER_H
