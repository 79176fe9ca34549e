#ifndef SEARCHPATH_TOOLS_SEARCHPATH_COMPILE_COMMANDS_AUDIT_H
#define SEARCHPATH_TOOLS_SEARCHPATH_COMPILE_COMMANDS_AUDIT_H

#include "output.h"
#include "search_path.h"
#include "shadow_output.h"

#include <string>

namespace Corvane::PathManagement::tool {

/// Prints which headers hide others in each distinct list of folders of a compilation database, and
/// which files are compiled with that list. The folders for headers in quotes come before the
/// others, as they do for such headers.
///
/// `path` says what to report. Errors: `UsageError` when it names a path, or rules other than
/// include, or when `database` cannot be used.
[[nodiscard]] Outcome AuditCompileCommands(const std::string& database, PathOptions path,
                                           const host::ShadowLookup& lookup,
                                           const ShadowFormat& format, const Output& output);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_COMPILE_COMMANDS_AUDIT_H
