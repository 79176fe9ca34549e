#ifndef SEARCHPATH_SRC_LISTED_PARTIAL_TARGET_H
#define SEARCHPATH_SRC_LISTED_PARTIAL_TARGET_H

#include "listed/entry_walk.h"
#include "searchpath/model/path.h"
#include "searchpath/utilities/partial_pathname.h"

#include <memory>
#include <optional>

namespace Corvane::PathManagement::detail {

/// A target whose name has separators, cut after the last one.
struct PartialTarget {
  ustring folder;     // ends with the last separator
  SearchTarget file;  // the rest of the name, with all extensions
};

/// The parts of `target`; nullopt when its name has no separator.
[[nodiscard]] std::optional<PartialTarget> SplitTarget(const SearchTarget& target);

/// The entry for the folder at `pathname`, which begins with a separator. Null when there is none,
/// or when no folder can have this pathname.
[[nodiscard]] std::shared_ptr<const IPathEntry> EntryNamed(const IPath& path,
                                                           const ustring& pathname,
                                                           FilenameMatchingPolicy policy);

[[nodiscard]] bool BeginsAtRoot(const ustring& pathname);

/// Calls ask(entry, target.file) for each entry of `path` in which `target` is to be looked for,
/// until a call returns true. forEachMatch(names, visit) has to call visit(entry), until a call
/// returns true, for the entries that the partial pathname with these folder names matches.
template <class ForEachMatch, class Ask>
void AskMatchingFolders(const IPath& path, SearchScope scope, const PartialTarget& target,
                        FilenameMatchingPolicy policy, const ForEachMatch& forEachMatch,
                        const Ask& ask) {
  if (target.file.GetName().empty()) return;  // it names a folder, and folders are no files
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
