#ifndef SEARCHPATH_TOOLS_SEARCHPATH_OTHER_NAMES_H
#define SEARCHPATH_TOOLS_SEARCHPATH_OTHER_NAMES_H

#include <string>
#include <string_view>
#include <vector>

namespace Corvane::PathManagement::tool {

// What the user probably meant by an unknown word; empty when nothing is likely.

/// The command, perhaps with an option: "find --explain" for "why". Considers the names in
/// `commands`, and what other tools call these commands.
[[nodiscard]] std::string FindCommandMeant(std::string_view typed,
                                           const std::vector<std::string>& commands);

/// The option, perhaps with a value: "--policy ignore-case" for "-i". `options` are the names of
/// all options of the command, with their dashes; the answer begins with one of them.
[[nodiscard]] std::string FindOptionMeant(std::string_view typed,
                                          const std::vector<std::string>& options);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_OTHER_NAMES_H
