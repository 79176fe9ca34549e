#ifndef SEARCHPATH_TOOLS_SEARCHPATH_SAVED_PATH_H
#define SEARCHPATH_TOOLS_SEARCHPATH_SAVED_PATH_H

#include "output.h"
#include "search_path.h"

#include <string>

namespace Corvane::PathManagement::tool {

/// Saves the path, with the listings of all its folders, as the cache `file`. Such a file serves
/// two options: `--cache` takes the listings from it, and `--path @FILE` takes the path as well.
/// Then reports problems as `ReportProblems` does. Returns `Failed` when that says that the command
/// must fail, else `Done`.
///
/// Errors: `UsageError`, whatever keeps `file` from being written: its message adds to that of the
/// failure that a cache was to be written.
[[nodiscard]] Outcome SavePath(const host::Environment& environment, const PathOptions& options,
                               const std::string& file);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_SAVED_PATH_H
