#ifndef SEARCHPATH_TOOLS_SEARCHPATH_ORIGIN_OUTPUT_H
#define SEARCHPATH_TOOLS_SEARCHPATH_ORIGIN_OUTPUT_H

#include "searchpath/host/environment.h"

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace Corvane::PathManagement::tool {

class Output;
struct PathOptions;

// Who put a folder on the path.

/// The text "from package geometry 1.2" or the like, as `output` shows it, for the `origin` of
/// `folder`, which is on the path that `options` name. Empty when the command line, or what it names
/// as the path, names the folder itself.
[[nodiscard]] std::string GetOriginText(const Output& output, const PathOptions& options,
                                        const host::Environment& environment,
                                        const host::FolderOrigin& origin, const IPathEntry& folder);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_ORIGIN_OUTPUT_H
