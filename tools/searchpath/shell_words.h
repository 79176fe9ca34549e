#ifndef SEARCHPATH_TOOLS_SEARCHPATH_SHELL_WORDS_H
#define SEARCHPATH_TOOLS_SEARCHPATH_SHELL_WORDS_H

#include <string>
#include <string_view>
#include <vector>

namespace Corvane::PathManagement::tool {

/// The words of `line` as a POSIX shell splits it, with its quotes and backslashes; nothing else has
/// a meaning. A quote without its end ends with the line.
[[nodiscard]] std::vector<std::string> SplitShellWords(std::string_view line);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_SHELL_WORDS_H
