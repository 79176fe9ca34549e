#ifndef SEARCHPATH_TOOLS_SEARCHPATH_GENERAL_HELP_H
#define SEARCHPATH_TOOLS_SEARCHPATH_GENERAL_HELP_H

#include <string>

namespace Corvane::PathManagement::tool {

// The help on searchpath itself, where no command is named.

/// What the program does, in a sentence.
inline constexpr const char* kGeneralPurpose =
    "Says which file a name means on a search path, and why.";

/// Lines of examples.
extern const char* const kGeneralExamples;

/// Its usage and all commands.
[[nodiscard]] std::string GetGeneralHelp();

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_GENERAL_HELP_H
