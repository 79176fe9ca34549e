#ifndef SEARCHPATH_TOOLS_SEARCHPATH_GENERAL_HELP_H
#define SEARCHPATH_TOOLS_SEARCHPATH_GENERAL_HELP_H

#include <string>

namespace Corvane::PathManagement::tool {

// The help that searchpath gives when no command is named.

/// What the program does, in a sentence.
inline constexpr const char* kGeneralPurpose =
    "Says which file a name means on a search path, and why.";

/// Lines of examples.
extern const char* const kGeneralExamples;

/// The usage of searchpath and the list of all commands.
[[nodiscard]] std::string GetGeneralHelp();

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_GENERAL_HELP_H
