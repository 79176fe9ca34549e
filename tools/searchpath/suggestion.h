#ifndef SEARCHPATH_TOOLS_SEARCHPATH_SUGGESTION_H
#define SEARCHPATH_TOOLS_SEARCHPATH_SUGGESTION_H

#include <string>
#include <string_view>
#include <vector>

namespace Corvane::PathManagement::tool {

/// The word of `known` that `typed` probably means, the first of several that are as similar; empty
/// when none is similar.
[[nodiscard]] std::string FindNearest(std::string_view typed,
                                      const std::vector<std::string>& known);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_SUGGESTION_H
