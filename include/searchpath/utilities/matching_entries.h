#ifndef SEARCHPATH_UTILITIES_MATCHING_ENTRIES_H
#define SEARCHPATH_UTILITIES_MATCHING_ENTRIES_H

#include "searchpath/export.h"
#include "searchpath/model/filename_matching_policy.h"
#include "searchpath/model/path_entry.h"
#include "searchpath/model/search_scope.h"
#include "searchpath/model/ustring.h"

namespace Corvane::current_working_folder {
class ICurrentWorkingFolder;
}  // namespace Corvane::current_working_folder

namespace Corvane::PathManagement {

class IPath;

/// The entries of `path` that the name of a folder, as a user types it, denotes.
///
/// An absolute name denotes one folder: the answer is `path`'s entry for it under `policy`, or
/// nothing; `scope` does not matter. Any other name is a partial pathname, and the answer is what
/// `path` has in `scope` for it: that name is not looked for below `workingFolder`. A name that
/// begins with two separators is absolute on every file system. An empty name denotes nothing.
///
/// Threads: stateless; as safe as `path` and `workingFolder` are.
/// Errors: a name that `workingFolder` cannot make absolute denotes nothing; all other exceptions
/// pass through.
[[nodiscard]] SEARCHPATH_EXPORT PathEntries
GetMatchingEntries(SearchScope scope, const ustring& name, const IPath& path,
                   const current_working_folder::ICurrentWorkingFolder& workingFolder,
                   FilenameMatchingPolicy policy);

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_MATCHING_ENTRIES_H
