#ifndef SEARCHPATH_SRC_LOOKUP_METHOD_FILES_H
#define SEARCHPATH_SRC_LOOKUP_METHOD_FILES_H

#include "searchpath/model/path.h"

// How a plain name is looked up in method entries beside the ordinary folders.
namespace Corvane::PathManagement::detail {

/// The method entries directly below ordinary folders that have the name of `target`. They are
/// looked up under the policy of the file system, whatever policy the question has.
inline PathEntries GetMethodEntriesFor(const IPath& path, const SearchTarget& target) {
  return path.GetMethodEntriesByName(kMainScope, target.GetName(),
                                     FilenameMatchingPolicy::FileSystemDefault);
}

/// Whether a file in `method` is meant rather than one in the ordinary folder `ordinary`: when it
/// comes first on the path. On a tie the ordinary folder wins.
inline bool MethodEntryWins(const IPath& path, const IPathEntry& method,
                            const IPathEntry& ordinary) {
  return path.FirstEntryIsBeforeSecondOnPath(method, ordinary);
}

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_LOOKUP_METHOD_FILES_H
