#ifndef SEARCHPATH_TOOLS_SEARCHPATH_COMMANDS_H
#define SEARCHPATH_TOOLS_SEARCHPATH_COMMANDS_H

#include "output.h"

namespace Corvane::PathManagement::tool {

struct Arguments;

// Each function runs one command with the arguments that follow its name.
// Errors: `UsageError`, and any exception that keeps the command from answering.

/// Which files do names mean?
[[nodiscard]] Outcome RunFind(const Arguments& arguments);

/// Which programs would a shell start?
[[nodiscard]] Outcome RunWhich(const Arguments& arguments);

/// Which folders are on the path?
[[nodiscard]] Outcome RunList(const Arguments& arguments);

/// Which files are on the path?
[[nodiscard]] Outcome RunFiles(const Arguments& arguments);

/// Which folders of the path do names denote?
[[nodiscard]] Outcome RunFolders(const Arguments& arguments);

/// Which names hide files?
[[nodiscard]] Outcome RunShadows(const Arguments& arguments);

/// What is wrong with the path?
[[nodiscard]] Outcome RunDoctor(const Arguments& arguments);

/// Who could make names on the path mean other files?
[[nodiscard]] Outcome RunTrust(const Arguments& arguments);

/// Puts folders on the stored path.
[[nodiscard]] Outcome RunAdd(const Arguments& arguments);

/// Takes folders off the stored path.
[[nodiscard]] Outcome RunRemove(const Arguments& arguments);

/// How do two paths differ?
[[nodiscard]] Outcome RunDiff(const Arguments& arguments);

/// What changes on the path, reported as it changes?
[[nodiscard]] Outcome RunWatch(const Arguments& arguments);

/// Saves what the folders of the path hold, or checks what was saved.
[[nodiscard]] Outcome RunCache(const Arguments& arguments);

/// Which answers of a receipt have changed?
[[nodiscard]] Outcome RunVerify(const Arguments& arguments);

/// Which packages are there?
[[nodiscard]] Outcome RunPackages(const Arguments& arguments);

/// Which profiles are there?
[[nodiscard]] Outcome RunProfiles(const Arguments& arguments);

/// What do texts become as IRIs?
[[nodiscard]] Outcome RunIri(const Arguments& arguments);

/// How is a command used?
[[nodiscard]] Outcome RunHelp(const Arguments& arguments);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_COMMANDS_H
