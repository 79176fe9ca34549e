#ifndef SEARCHPATH_TOOLS_SEARCHPATH_COMMANDS_H
#define SEARCHPATH_TOOLS_SEARCHPATH_COMMANDS_H

#include "output.h"

#include <string>
#include <vector>

namespace Corvane::PathManagement::tool {

// Each runs one command with the arguments that follow its name.
// Errors: `UsageError`, and any exception that keeps it from answering.

/// Which files do names mean?
[[nodiscard]] Outcome RunFind(const std::vector<std::string>& arguments);

/// Which programs would a shell start?
[[nodiscard]] Outcome RunWhich(const std::vector<std::string>& arguments);

/// Which folders are on the path?
[[nodiscard]] Outcome RunList(const std::vector<std::string>& arguments);

/// Which files are on the path?
[[nodiscard]] Outcome RunFiles(const std::vector<std::string>& arguments);

/// Which folders of the path do names denote?
[[nodiscard]] Outcome RunFolders(const std::vector<std::string>& arguments);

/// Which names hide files?
[[nodiscard]] Outcome RunShadows(const std::vector<std::string>& arguments);

/// What is wrong with the path?
[[nodiscard]] Outcome RunDoctor(const std::vector<std::string>& arguments);

/// Who could make names on the path mean other files?
[[nodiscard]] Outcome RunTrust(const std::vector<std::string>& arguments);

/// Puts folders on the stored path.
[[nodiscard]] Outcome RunAdd(const std::vector<std::string>& arguments);

/// Takes folders off the stored path.
[[nodiscard]] Outcome RunRemove(const std::vector<std::string>& arguments);

/// How do two paths differ?
[[nodiscard]] Outcome RunDiff(const std::vector<std::string>& arguments);

/// What changes on the path, while it does?
[[nodiscard]] Outcome RunWatch(const std::vector<std::string>& arguments);

/// Saves the listings of the path, or checks those that were saved.
[[nodiscard]] Outcome RunCache(const std::vector<std::string>& arguments);

/// Which answers of a receipt have changed?
[[nodiscard]] Outcome RunVerify(const std::vector<std::string>& arguments);

/// Which packages are there?
[[nodiscard]] Outcome RunPackages(const std::vector<std::string>& arguments);

/// Which profiles are there?
[[nodiscard]] Outcome RunProfiles(const std::vector<std::string>& arguments);

/// What do texts become as IRIs?
[[nodiscard]] Outcome RunIri(const std::vector<std::string>& arguments);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_COMMANDS_H
