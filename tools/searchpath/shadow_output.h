#ifndef SEARCHPATH_TOOLS_SEARCHPATH_SHADOW_OUTPUT_H
#define SEARCHPATH_TOOLS_SEARCHPATH_SHADOW_OUTPUT_H

#include "searchpath/host/shadow_search.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace Corvane::PathManagement::tool {

class Output;

/// Prints the shadows, or how many files each folder hides. In JSON, the objects begin with the
/// number of the `list` of folders that was searched, if it is one of several.
void WriteShadows(const Output& output, const std::vector<host::Shadow>& shadows, bool asSummary,
                  std::optional<std::size_t> list = {});

/// Reports each file that could not be read, once.
void ReportUnread(const std::vector<host::Shadow>& shadows);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_SHADOW_OUTPUT_H
