#ifndef SEARCHPATH_TOOLS_SEARCHPATH_NAMES_FROM_INPUT_H
#define SEARCHPATH_TOOLS_SEARCHPATH_NAMES_FROM_INPUT_H

#include <functional>
#include <string>

namespace Corvane::PathManagement::tool {

/// Calls `visitor` with each name on standard input, where each ends with `end`. Empty names are
/// skipped and reported. Returns whether no name was empty.
///
/// Calls `wait` whenever no input is ready, just before waiting for more. The caller can flush its
/// answers there, so that a program that writes one name at a time gets each answer at once, and a
/// program that writes many names is not slowed down. `wait` may itself wait for input.
///
/// Errors: `UsageError` when standard input cannot be read.
[[nodiscard]] bool ForEachNameFromInput(char end,
                                        const std::function<void(const std::string&)>& visitor,
                                        const std::function<void()>& wait);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_NAMES_FROM_INPUT_H
