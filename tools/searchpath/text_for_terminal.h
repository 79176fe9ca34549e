#ifndef SEARCHPATH_TOOLS_SEARCHPATH_TEXT_FOR_TERMINAL_H
#define SEARCHPATH_TOOLS_SEARCHPATH_TEXT_FOR_TERMINAL_H

#include <cstddef>
#include <string>
#include <string_view>

namespace Corvane::PathManagement::tool {

/// `bytes` as one line in which a terminal finds no control sequence, and which it does not
/// reorder. ASCII control characters, such as a line break, and bytes that are not UTF-8 become
/// escapes as "\x0A"; other control characters, line separators and direction characters become
/// escapes as "\u202E".
[[nodiscard]] std::string GetTextForTerminal(std::string_view bytes);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_TEXT_FOR_TERMINAL_H
