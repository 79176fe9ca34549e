#ifndef SEARCHPATH_SRC_HOST_FOLDER_ENTRY_STATE_H
#define SEARCHPATH_SRC_HOST_FOLDER_ENTRY_STATE_H

#include "host/folder/folder_state.h"
#include "searchpath/host/folder_entry.h"

#include <memory>
#include <optional>

namespace Corvane::PathManagement::host {

// Functions on entries that only the host uses.

/// The state of the folder of `entry`; the entry owns it.
[[nodiscard]] inline FolderState& StateOf(const FolderEntry& entry) noexcept {
  return *entry.state;
}

/// An entry for the folder that `state` describes. `specialFolders` are the entries of its special
/// folders; when null, they are made from `state` when they are first asked for.
[[nodiscard]] std::shared_ptr<const FolderEntry> CreateEntry(
    std::unique_ptr<FolderState> state, std::unique_ptr<FolderEntries> specialFolders = nullptr);

/// An entry for a folder that is put on a path, as `FolderEntry::Create` makes it. Its listing, and
/// the listings of folders below it, come from `source`; from the disk when `source` is null.
/// `limit` says how long to wait for the disk: see `DiskPatience`.
[[nodiscard]] std::shared_ptr<const FolderEntry> CreateMainFolder(
    const AbsoluteIRI& location, std::shared_ptr<const ListingSource> source,
    DiskPatience::Limit limit = {});

/// The problem of `folder` itself, not those of links in it; empty when there is none, or when the
/// folder has files to show all the same. Lists the folder.
[[nodiscard]] std::optional<FolderProblem> FindOwnProblem(const FolderEntry& folder);

/// Resolves the location of each folder unless that has been done. For folders that stand in one
/// parent folder, the location of the parent folder is resolved once.
void IdentifyAll(const FolderEntries& folders);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_FOLDER_ENTRY_STATE_H
