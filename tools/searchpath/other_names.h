#ifndef SEARCHPATH_TOOLS_SEARCHPATH_OTHER_NAMES_H
#define SEARCHPATH_TOOLS_SEARCHPATH_OTHER_NAMES_H

#include <string>
#include <string_view>
#include <vector>

namespace Corvane::PathManagement::tool {

// What was probably meant by a word that is not known; empty when nothing is likely.

/// A command, perhaps with an option. Knows what other tools call the commands; `commands` are the
/// names here.
[[nodiscard]] std::string FindCommandMeant(std::string_view typed,
                                           const std::vector<std::string>& commands);

/// An option, perhaps with a value. `options` are those of the command, as they are typed.
[[nodiscard]] std::string FindOptionMeant(std::string_view typed,
                                          const std::vector<std::string>& options);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_OTHER_NAMES_H
