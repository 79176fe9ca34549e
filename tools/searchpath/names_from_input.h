#ifndef SEARCHPATH_TOOLS_SEARCHPATH_NAMES_FROM_INPUT_H
#define SEARCHPATH_TOOLS_SEARCHPATH_NAMES_FROM_INPUT_H

#include <functional>
#include <string>

namespace Corvane::PathManagement::tool {

/// Calls `visitor` with each name on standard input, where each ends with `end`. Empty names are
/// skipped and reported. Returns whether no name was empty.
///
/// Calls `wait` whenever no input is ready, before it waits for more. `wait` is the time to flush
/// the answers, so that a program that writes one name at a time gets each answer at once, and one
/// that writes many names is not slowed down. `wait` may itself wait for input.
///
/// Errors: `UsageError` when standard input cannot be read.
[[nodiscard]] bool ForEachNameFromInput(char end,
                                        const std::function<void(const std::string&)>& visitor,
                                        const std::function<void()>& wait);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_NAMES_FROM_INPUT_H
