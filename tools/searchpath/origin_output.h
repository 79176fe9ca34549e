#ifndef SEARCHPATH_TOOLS_SEARCHPATH_ORIGIN_OUTPUT_H
#define SEARCHPATH_TOOLS_SEARCHPATH_ORIGIN_OUTPUT_H

#include "searchpath/host/environment.h"

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace Corvane::PathManagement::tool {

class Output;

// Who put a folder on the path.

/// The text "from package geometry 1.2" or the like, as `output` shows it, for the `origin` of
/// `folder`. Empty when the command line names the folder itself.
[[nodiscard]] std::string GetOriginText(const Output& output, const host::Environment& environment,
                                        const host::FolderOrigin& origin, const IPathEntry& folder);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_ORIGIN_OUTPUT_H
