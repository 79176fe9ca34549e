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

/// The entries of `path` that `name` denotes, the name of a folder as a user types it.
///
/// An absolute name ("/x", "~x", "//host/x" or an IRI) denotes one folder: the answer is the entry
/// of `path` for that folder under `policy`, or nothing; `scope` does not matter. Any other name is
/// a partial pathname: the answer is `GetPartiallyMatchingEntries` of `path`, and the name is not
/// looked for below `workingFolder`. An empty name denotes nothing.
///
/// Threads: stateless; as safe as `path` and `workingFolder` are.
/// Errors: when `workingFolder` cannot make an absolute name into a location, the answer is empty;
/// all other exceptions pass through.
[[nodiscard]] SEARCHPATH_EXPORT PathEntries
GetMatchingEntries(SearchScope scope, const ustring& name, const IPath& path,
                   const current_working_folder::ICurrentWorkingFolder& workingFolder,
                   FilenameMatchingPolicy policy);

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_MATCHING_ENTRIES_H
