#ifndef SEARCHPATH_SRC_LISTED_PARTIAL_TARGET_H
#define SEARCHPATH_SRC_LISTED_PARTIAL_TARGET_H

#include "listed/entry_walk.h"
#include "searchpath/model/path.h"
#include "searchpath/utilities/partial_pathname.h"

#include <memory>
#include <optional>

namespace Corvane::PathManagement::detail {

/// A target whose name has separators, taken apart.
struct PartialTarget {
  ustring folder;  // up to the last separator, with it
  SearchTarget file;
};

/// Empty for a plain name.
[[nodiscard]] std::optional<PartialTarget> SplitTarget(const SearchTarget& target);

/// The entry for the folder that a full pathname names, one that begins with a separator; null also
/// for a name that no folder can have.
[[nodiscard]] std::shared_ptr<const IPathEntry> EntryNamed(const IPath& path,
                                                           const ustring& pathname,
                                                           FilenameMatchingPolicy policy);

[[nodiscard]] bool BeginsAtRoot(const ustring& pathname);

/// Calls ask(entry, file) for the entries of `path` in which `target`, whose name has separators, is
/// to be looked for, until it returns true. forEachMatch(folders, visit) visits those that a partial
/// pathname matches.
template <class ForEachMatch, class Ask>
void AskMatchingFolders(const IPath& path, SearchScope scope, const PartialTarget& target,
                        FilenameMatchingPolicy policy, const ForEachMatch& forEachMatch,
                        const Ask& ask) {
  if (target.file.GetName().empty()) return;  // the name of a folder, and folders are no files
  if (BeginsAtRoot(target.folder)) {
    const auto entry = EntryNamed(path, target.folder, policy);
    if (entry != nullptr && IsInScope(scope, entry->GetPathEntryType())) ask(entry, target.file);
  } else {
    forEachMatch(SplitPartialPathname(target.folder),
                 [&](const auto& entry) { return ask(entry, target.file); });
  }
}

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_LISTED_PARTIAL_TARGET_H
