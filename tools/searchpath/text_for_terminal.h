#ifndef SEARCHPATH_TOOLS_SEARCHPATH_TEXT_FOR_TERMINAL_H
#define SEARCHPATH_TOOLS_SEARCHPATH_TEXT_FOR_TERMINAL_H

#include <cstddef>
#include <string>
#include <string_view>

namespace Corvane::PathManagement::tool {

/// `bytes` as one line that a terminal neither obeys as a control sequence nor shows in another order:
/// controls, line breaks and direction characters as "\u202E", bytes that are not UTF-8 as "\xFF".
[[nodiscard]] std::string GetTextForTerminal(std::string_view bytes);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_TEXT_FOR_TERMINAL_H
