#ifndef SEARCHPATH_TOOLS_SEARCHPATH_NAMES_FROM_INPUT_H
#define SEARCHPATH_TOOLS_SEARCHPATH_NAMES_FROM_INPUT_H

#include <functional>
#include <string>

namespace Corvane::PathManagement::tool {

/// Calls `visitor` with each name on standard input; the byte `end` ends a name. Empty names are
/// reported and not visited. Returns whether no name was empty.
///
/// Calls `beforeWait` before each read that may block, since no input is ready. There the caller
/// can flush its answers: a program that writes one name at a time gets each answer at once, and a
/// program that writes many names is not slowed down. `beforeWait` may itself wait for input, for
/// example while it reports other events.
///
/// Errors: `UsageError` when standard input cannot be read.
[[nodiscard]] bool ForEachNameFromInput(char end,
                                        const std::function<void(const std::string&)>& visitor,
                                        const std::function<void()>& beforeWait);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_NAMES_FROM_INPUT_H
