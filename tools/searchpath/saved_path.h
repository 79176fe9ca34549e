#ifndef SEARCHPATH_TOOLS_SEARCHPATH_SAVED_PATH_H
#define SEARCHPATH_TOOLS_SEARCHPATH_SAVED_PATH_H

#include "search_path.h"

#include <string>

namespace Corvane::PathManagement::tool {

/// Saves the listings of the whole path and reports folders that cannot be searched. Returns whether
/// they make the command fail.
///
/// Errors: `UsageError` when the file cannot be written.
[[nodiscard]] bool SavePath(const host::Environment& environment, const PathOptions& options,
                            const std::string& file);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_SAVED_PATH_H
