#ifndef SEARCHPATH_HOST_FOLDER_TREE_H
#define SEARCHPATH_HOST_FOLDER_TREE_H

#include "searchpath/export.h"
#include "searchpath/host/folder_entry.h"

#include <memory>

namespace Corvane::PathManagement::host {

/// `root` and all ordinary folders below it, depth first, each folder's subfolders in the order of
/// the bytes of their names. Folders whose names begin with a dot are included. Special folders
/// ("+", "@", private, resources), and all that is below them, are left out. Links are followed,
/// but each folder occurs once: where it is reached without a link, or else at the first link that
/// leads to it. So loops end.
///
/// Cost: lists every folder once.
[[nodiscard]] SEARCHPATH_EXPORT FolderEntries CreateFolderTree(const AbsoluteIRI& root);

/// The same from an entry for the root. If the listing of the entry comes from a cache, those of
/// the folders below come from that cache, too. Precondition: `root` is not null.
[[nodiscard]] SEARCHPATH_EXPORT FolderEntries
CreateFolderTree(std::shared_ptr<const FolderEntry> root);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_FOLDER_TREE_H
