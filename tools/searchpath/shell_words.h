#ifndef SEARCHPATH_TOOLS_SEARCHPATH_SHELL_WORDS_H
#define SEARCHPATH_TOOLS_SEARCHPATH_SHELL_WORDS_H

#include <string>
#include <string_view>
#include <vector>

namespace Corvane::PathManagement::tool {

/// The words into which a POSIX shell splits `line`. Blanks, line breaks, quotes and backslashes
/// have their meaning; nothing else, such as "$" or "*", has one. A quote that is not closed
/// reaches to the end of `line`, which may hold line breaks.
[[nodiscard]] std::vector<std::string> SplitShellWords(std::string_view line);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_SHELL_WORDS_H
