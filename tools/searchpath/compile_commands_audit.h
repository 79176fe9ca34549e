#ifndef SEARCHPATH_TOOLS_SEARCHPATH_COMPILE_COMMANDS_AUDIT_H
#define SEARCHPATH_TOOLS_SEARCHPATH_COMPILE_COMMANDS_AUDIT_H

#include "output.h"
#include "search_path.h"
#include "shadow_output.h"

#include <string>

namespace Corvane::PathManagement::tool {

/// Asks the compilers of a compilation database which folders they search. Prints, for each
/// distinct list of folders, which headers hide others and which files use the list. Each
/// list begins with the folders for headers in quotes, since these are looked for there first.
///
/// `path` has no folders, but the options on how to search and what to report. Returns `Failed`
/// when a compiler did not answer, or with --strict when a folder cannot be searched; otherwise
/// `Findings` when headers are hidden, and `Clean` when none are.
///
/// Errors: `UsageError` when `path` names folders, or rules other than include, or when `database`
/// cannot be used.
[[nodiscard]] Outcome AuditCompileCommands(const std::string& database, PathOptions path,
                                           const host::ShadowLookup& lookup,
                                           const ShadowFormat& format, const Output& output);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_COMPILE_COMMANDS_AUDIT_H
