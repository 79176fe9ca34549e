#ifndef SEARCHPATH_TOOLS_SEARCHPATH_SAVED_PATH_H
#define SEARCHPATH_TOOLS_SEARCHPATH_SAVED_PATH_H

#include "output.h"
#include "search_path.h"

#include <string>

namespace Corvane::PathManagement::tool {

/// Saves the listings of all folders of the path in `file`, a cache, and reports as `ReportProblems`.
/// Returns `Failed` when `ReportProblems` says that the command must fail, else `Found`.
///
/// Errors: `UsageError` when `file` cannot be written.
[[nodiscard]] Outcome SavePath(const host::Environment& environment, const PathOptions& options,
                               const std::string& file);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_SAVED_PATH_H
