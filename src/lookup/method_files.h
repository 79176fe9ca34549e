#ifndef SEARCHPATH_SRC_LOOKUP_METHOD_FILES_H
#define SEARCHPATH_SRC_LOOKUP_METHOD_FILES_H

#include "searchpath/model/path.h"

// How a name without separators is looked up in method entries beside the ordinary folders. The
// method entry of a name is the entry for a folder "@name".
namespace Corvane::PathManagement::detail {

/// The method entries of the name of `target`, directly below ordinary folders. The name is
/// compared as the file system does, whatever policy the look-up has for files.
inline PathEntries GetMethodEntriesFor(const IPath& path, const SearchTarget& target) {
  return path.GetMethodEntriesByName(kMainScope, target.GetName(),
                                     FilenameMatchingPolicy::FileSystemDefault);
}

/// Whether a file in the method entry `method` wins over one of that name in the ordinary folder
/// `ordinary`: when `method` comes first on `path`. When neither comes first, `ordinary` wins.
inline bool MethodEntryWins(const IPath& path, const IPathEntry& method,
                            const IPathEntry& ordinary) {
  return path.FirstEntryIsBeforeSecondOnPath(method, ordinary);
}

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_LOOKUP_METHOD_FILES_H
