#ifndef SEARCHPATH_TOOLS_SEARCHPATH_NAMES_FROM_INPUT_H
#define SEARCHPATH_TOOLS_SEARCHPATH_NAMES_FROM_INPUT_H

#include <functional>
#include <string>

namespace Corvane::PathManagement::tool {

/// Calls `visitor` with each name on standard input; each ends with `end`. Empty names are skipped and
/// reported. Returns whether there were none.
///
/// Before it waits for input it calls `wait`, which may wait for it, too: whoever writes one name at a
/// time gets its answer at once, and whoever writes many is not slowed down.
///
/// Errors: `UsageError` when standard input cannot be read.
[[nodiscard]] bool ForEachNameFromInput(char end,
                                        const std::function<void(const std::string&)>& visitor,
                                        const std::function<void()>& wait);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_NAMES_FROM_INPUT_H
